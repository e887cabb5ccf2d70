#pragma once

#include "automation/vbscript/code.h"
#include "automation/vbscript/objects.h"

#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

namespace zentrel::vbscript {

class Runtime;

/// Runs compiled code. Calls between script procedures don't nest in C++; what does (default
/// members, hosts that call back, Execute) is limited.
class Machine {
  public:
    explicit Machine(Runtime& runtime);
    ~Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    /// Runs a procedure. Error 450 when the number of arguments is wrong.
    Value Run(const Procedure& procedure, Instance* self, std::span<Value> args);
    void RunTerminate(Instance& instance) noexcept;
    bool Running() const { return !frames_.empty(); }

    /// Execute and Eval, in the scope of the running procedure.
    void ExecuteHere(std::u16string_view text);
    Value EvalHere(std::u16string_view text);
    void ExecuteGlobal(std::u16string_view text);
    /// The module whose code runs.
    ScriptModule& CurrentModule();

    /// Counts one step of something long; asks the host now and then whether to stop.
    void Poll() {
        if (--budget_ <= 0) AskHost();
    }

  private:
    struct Frame {
        const Procedure* procedure;
        const Instruction* pc;
        Value* base;
        Instance* self;
        bool resume_next;
        bool entry;
    };
    /// What a name means when it is used.
    struct Meaning {
        Value* variable = nullptr;
        const Procedure* procedure = nullptr;
        const Builtin* builtin = nullptr;
        HostObject* object = nullptr;
    };
    struct Cursor {
        const Instruction* pc;
        Value** banks;
        Value& operator[](Operand operand) const {
            return banks[operand >> kPlaceBits][operand & kMaxPlace];
        }
    };

    // --- frames: machine.cpp ---
    void Push(const Procedure& procedure, Instance* self, Value* args, std::size_t count,
              bool entry);
    static void TakeValue(Value& argument);
    void Pop();
    void Activate();
    Value* Top() const;
    /// Finds a handler above `depth`; false when the error leaves this run.
    bool Recover(ErrorInfo& info, std::size_t depth);
    void Locate(ErrorInfo& info) const;
    const Mark* MarkAt(const Frame& frame, std::size_t pc, bool next) const;
    void AskHost();
    Value RunAbove(std::size_t depth);
    Value RunBorrowing(const Procedure& procedure);
    std::size_t ScopeFrame() const;

    // --- instructions: machine_loop.cpp ---
    /// Runs the frames above `depth`, and those that they call, to their end.
    void Execute(std::size_t depth);
    void Dispatch();

    // --- instructions that fit no fast path: machine_*.cpp ---
    void Free(const Instruction& in, const Cursor& at);
    void Store(const Instruction& in, const Cursor& at, Value&& value);
    void BinarySlow(const Instruction& in, const Cursor& at);
    /// `from`: the first of the six comparisons that the instruction's code counts from.
    Value CompareSlow(const Instruction& in, const Cursor& at, Op from);
    void DoLet(const Instruction& in, const Cursor& at);
    void DoSetVar(const Instruction& in, const Cursor& at);
    void DoCopy(const Instruction& in, const Cursor& at);
    void DoIs(const Instruction& in, const Cursor& at);
    void DoUnary(const Instruction& in, const Cursor& at);
    void DoConcat(const Instruction& in, const Cursor& at);
    void DoConcatMany(const Instruction& in, const Cursor& at);
    void DoForInit(const Instruction& in, const Cursor& at);
    bool ForContinues(const Instruction& in, const Cursor& at);
    bool DoForNext(const Instruction& in, const Cursor& at);
    void DoEachInit(const Instruction& in, const Cursor& at);
    bool DoEachNext(const Instruction& in, const Cursor& at);
    HostObject* NamedObject(Site& site);
    Meaning MeaningOf(Site& site, const Cursor& at);
    Value& CreateVariable(const Site& site, const Cursor& at);
    void DoReadName(const Instruction& in, const Cursor& at);
    void DoBindName(const Instruction& in, const Cursor& at);
    void DoIndex(const Instruction& in, const Cursor& at);
    void DoIndexMany(const Instruction& in, const Cursor& at);
    void DoIndexRef(const Instruction& in, const Cursor& at);
    void DoSetIndex(const Instruction& in, const Cursor& at);
    void DoSetIndexMany(const Instruction& in, const Cursor& at);
    Value ReferenceTo(Value& base, std::span<Value> args);
    void DoCall(const Instruction& in, const Cursor& at);
    void DoCallBuiltin(const Instruction& in, const Cursor& at);
    void CallBuiltin(const Instruction& in, const Cursor& at, const Builtin& builtin, Site& site);
    void DoInvoke(const Instruction& in, const Cursor& at);
    void InvokeInstance(const Instruction& in, const Cursor& at, Instance& instance, Site& site);
    void InvokeHost(const Instruction& in, const Cursor& at, HostObject& host, Site& site);
    void DoSetMember(const Instruction& in, const Cursor& at);
    bool SetInstanceMember(const Instruction& in, const Cursor& at, Instance& instance, Site& site);
    const ClassMember& FindMember(const Instance& instance, Site& site);
    void DoMe(const Instruction& in, const Cursor& at);
    void DoNew(const Instruction& in, const Cursor& at);
    void DoWithBegin(const Instruction& in, const Cursor& at);
    void DoFail(const Instruction& in, const Cursor& at);
    void SetErrorMode(bool resume_next);
    void DoDimArray(const Instruction& in, const Cursor& at);
    void DoReDim(const Instruction& in, const Cursor& at);
    void DoErase(const Instruction& in, const Cursor& at);
    std::u16string_view NameOf(Operand operand) const;
    [[noreturn]] void RaiseObjectRequired(Operand operand) const;
    std::span<Value> SiteArguments(const Site& site, const Cursor& at) const;
    void Enter(const Procedure& procedure, Instance* self, const Site& site, const Cursor& at);
    Site& SiteOf(const Instruction& in) const;

    static constexpr std::size_t kStackSize = std::size_t{1} << 18;
    static constexpr std::size_t kMaxFrames = 12000;
    static constexpr int kMaxNested = 120;
    static constexpr int kStepsPerQuestion = 4096;

    Runtime& runtime_;
    std::unique_ptr<std::byte[]> memory_;
    Value* stack_;
    Value* stack_end_;
    std::vector<Frame> frames_;
    Value result_;
    int nested_ = 0;
    bool stopping_ = false; ///< the host has interrupted the script
    int budget_ = kStepsPerQuestion;
    /// Variables that Execute has added to a procedure, by the place of its frame.
    std::unordered_map<std::size_t, std::unordered_map<NameId, std::unique_ptr<Value>>> extras_;
};

} // namespace zentrel::vbscript
