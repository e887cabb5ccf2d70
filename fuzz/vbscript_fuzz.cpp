// Compiles and runs arbitrary text as a script, with a limit on its steps and its memory. A script
// may fail; the interpreter may not.

#include "automation/vbscript/convert.h"
#include "automation/vbscript/member_table.h"
#include "automation/vbscript/vbscript.h"

#include <cstddef>
#include <cstdint>

namespace {

using namespace zentrel::vbscript;

constexpr int kQuestions = 8; ///< each a few thousand steps
constexpr std::size_t kMemory = std::size_t{48} << 20;

/// Takes and gives everything.
class Anything : public HostObject {
  public:
    std::string_view ClassName() const override { return "Anything"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        return FindRow(kMembers, name);
    }
    std::optional<Member> DefaultMember() const override { return Member{kValue, true}; }
    Value Get(int slot, Arguments args) override {
        if (slot == kSelf) return Value::FromObject(this);
        if (slot == kEcho) {
            for (std::size_t i = 0; i < args.size(); ++i)
                ToText(args[i]);
            return {};
        }
        for (std::size_t i = 0; i < args.size(); ++i)
            args[i] = value_;
        return value_;
    }
    void Set(int, Arguments, const Value& value) override {
        value_ = value.IsObject() ? Value() : value;
    }

  private:
    enum Slot { kValue, kSelf, kEcho };
    static constexpr MemberRow kMembers[] = {
        {"Value", kValue, true}, {"Self", kSelf, false}, {"Echo", kEcho, true}};
    Value value_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static int questions = 0;
    static Engine engine([] {
        Callbacks callbacks;
        callbacks.interrupt = [] { return ++questions > kQuestions; };
        callbacks.now = [] { return 45000.5; };
        return callbacks;
    }());
    SetMemoryLimit(kMemory);
    questions = 0;
    try {
        engine.AddObject("WScript", Make<Anything>());
        auto& module = engine.AddModule("Fuzz");
        module.AddCode(std::string_view(reinterpret_cast<const char*>(data), size));
        if (module.HasProcedure("F")) module.Run("F");
    } catch (const ScriptError&) {
        // A script's own failure.
    }
    engine.Reset();
    return 0;
}
