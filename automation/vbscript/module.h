#pragma once

#include "automation/vbscript/code.h"

#include <array>
#include <unordered_set>

namespace zentrel::vbscript {

/// A module as the machine sees it: globals by place, procedures and classes.
class ScriptModule : public Module {
  public:
    ScriptModule(Runtime& runtime, std::string name);
    ~ScriptModule() override;

    const std::string& Name() const override { return name_; }
    void AddCode(std::string_view text) override;
    bool HasProcedure(std::string_view name) const override;
    Value Run(std::string_view procedure, std::span<Value> args) override;
    Value Eval(std::string_view expression) override;

    Runtime& runtime() { return runtime_; }
    /// The place of a global name, new or known; Unset until something declares it.
    Operand GlobalPlace(NameId name);
    Value& Global(Operand place) { return banks_[place >> kPlaceBits][place & kMaxPlace]; }
    /// The global of that name, or null if nothing has declared it.
    Value* FindGlobal(NameId name);
    NameId NameAt(Operand place) const; ///< kNoName for a place of another kind
    bool IsConstant(NameId name) const { return constants_.contains(name); }
    const ClassInfo* FindClass(NameId name) const;
    Value** Banks() { return banks_.data(); }

    /// Makes what a program declares known: variables, constants, then procedures and classes.
    void DeclareVariables(const Program& program);
    void Adopt(std::unique_ptr<Procedure> procedure);
    void Adopt(std::unique_ptr<ClassInfo> info);
    /// Lets go of all globals (the engine closes).
    void ClearGlobals();

  private:
    static constexpr std::uint32_t kPageSize = 1024;

    Runtime& runtime_;
    std::string name_;
    std::array<Value*, kBankCount> banks_{};
    std::vector<std::unique_ptr<Value[]>> pages_;
    std::uint32_t global_count_ = 0;
    std::unordered_map<NameId, Operand> places_;
    std::unordered_set<NameId> constants_;
    std::unordered_map<NameId, std::unique_ptr<ClassInfo>> classes_;
    std::vector<std::unique_ptr<Procedure>> procedures_;
    std::vector<std::unique_ptr<ClassInfo>> old_classes_;
};

} // namespace zentrel::vbscript
