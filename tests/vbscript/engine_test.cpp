#include "automation/vbscript/member_table.h"
#include "automation/vbscript/vbscript.h"

#include <unordered_map>

namespace zentrel::vbscript {
namespace {

ErrorInfo ErrorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const ScriptError& error) {
        return error.info;
    }
    return {};
}

/// A field with a value, a list of them by key, and a note of what was done to it.
class Box : public HostObject {
  public:
    std::string_view ClassName() const override { return "cBox"; }
    const void* MemberTable() const override { return kMembers; }
    std::optional<Member> FindMember(std::u16string_view name) const override {
        ++lookups;
        return FindRow(kMembers, name);
    }
    std::optional<Member> DefaultMember() const override { return Member{kValue, false}; }
    Value Get(int slot, Arguments args) override {
        switch (slot) {
        case kValue:
            return value;
        case kTwice:
            args[0] = Value::Long(args[0].AsInteger() * 2);
            return {};
        case kList:
            return Value::FromObject(list);
        case kRefuse:
            throw ScriptError(5, "refused");
        case kBroken:
            throw std::runtime_error("host fault");
        default:
            return {};
        }
    }
    void Set(int, Arguments, const Value& given) override { value = given; }
    void SetRef(int, Arguments, const Value& given) override { value = given; }

    Value value = Value::Long(1);
    Handle<HostObject> list;
    mutable int lookups = 0;

  private:
    enum Slot { kValue, kTwice, kList, kRefuse, kBroken };
    static constexpr MemberRow kMembers[] = {{"Value", kValue, false},
                                             {"Twice", kTwice, true},
                                             {"List", kList, false},
                                             {"Refuse", kRefuse, true},
                                             {"Broken", kBroken, true}};
};

class Boxes : public HostObject {
  public:
    std::string_view ClassName() const override { return "Collection"; }
    const void* MemberTable() const override { return nullptr; }
    std::optional<Member> FindMember(std::u16string_view) const override { return std::nullopt; }
    std::optional<Member> DefaultMember() const override { return Member{0, true}; }
    Value Get(int, Arguments args) override {
        return Value::FromObject(items.at(args[0].ToUtf8()));
    }
    std::unordered_map<std::string, Handle<Box>> items;
};

TEST(engine, runs_a_procedure_with_arguments_and_gives_its_result) {
    Engine engine;
    auto& module = engine.AddModule("M");
    module.AddCode("Function Add(a, ByVal b) : a = a + 1 : b = 0 : Add = a + 10 : End Function\n"
                   "Sub S : End Sub\nDim x");
    Value args[] = {Value::Integer(1), Value::Integer(2)};
    EXPECT_EQ(module.Run("add", args).AsInteger(), 12);
    EXPECT_EQ(args[0].AsInteger(), 2) << "ByRef changes the caller's argument";
    EXPECT_EQ(args[1].AsInteger(), 2);
    EXPECT_TRUE(module.Run("S").IsEmpty());
    EXPECT_TRUE(module.HasProcedure("ADD"));
    EXPECT_FALSE(module.HasProcedure("x"));
    EXPECT_FALSE(module.HasProcedure("nowhere"));
    EXPECT_EQ(ErrorOf([&] { module.Run("nowhere"); }).number, 13);
    EXPECT_EQ(ErrorOf([&] { module.Run("Add"); }).number, 450);
    EXPECT_EQ(module.Eval("Len(\"abc\") * 2").AsInteger(), 6);
}

TEST(engine, names_module_procedure_line_column_and_text_of_an_error) {
    Engine engine;
    auto& module = engine.AddModule("Hooks");
    module.AddCode("Sub Hook\r\n  Dim a\r\n  a = 1 : a = a / 0\r\nEnd Sub\r\n");
    const auto error = ErrorOf([&] { module.Run("Hook"); });
    EXPECT_EQ(error.number, 11);
    EXPECT_EQ(error.description, "Division by zero");
    EXPECT_EQ(error.source, "Microsoft VBScript runtime error");
    EXPECT_EQ(error.module, "Hooks");
    EXPECT_EQ(error.procedure, "Hook");
    EXPECT_EQ(error.line, 3);
    EXPECT_EQ(error.column, 11);
    EXPECT_EQ(error.line_text, "  a = 1 : a = a / 0");
    EXPECT_EQ(engine.LastError().line, 3);

    const auto compile = ErrorOf([&] { module.AddCode("x = 1\nIf x\n"); });
    EXPECT_EQ(compile.number, 1017);
    EXPECT_EQ(compile.source, "Microsoft VBScript compilation error");
    EXPECT_EQ(compile.line, 2);
    EXPECT_EQ(compile.column, 5);
    EXPECT_EQ(compile.line_text, "If x");
    EXPECT_EQ(compile.module, "Hooks");
}

TEST(engine, keeps_modules_apart_but_shares_the_global_one_and_named_objects) {
    Engine engine;
    const auto box = Make<Box>();
    engine.AddObject("Box", Handle<HostObject>(box));
    engine.GlobalModule().AddCode("Function Shared : Shared = \"g\" : End Function\nDim v : v = 5");
    auto& a = engine.AddModule("A");
    auto& b = engine.AddModule("B");
    a.AddCode("Function F : F = \"a\" & Shared & v & Box.Value : End Function");
    b.AddCode("Function F : F = \"b\" : End Function\nFunction G : G = OnlyInA : End Function");
    a.AddCode("Function OnlyInA : OnlyInA = 1 : End Function");
    EXPECT_EQ(a.Run("F").ToUtf8(), "ag51");
    EXPECT_EQ(b.Run("F").ToUtf8(), "b");
    EXPECT_TRUE(b.Run("G").IsEmpty());
    a.AddCode("Sub SetV : v = 6 : End Sub");
    a.Run("SetV");
    EXPECT_EQ(b.Eval("v").AsInteger(), 6);

    EXPECT_EQ(ErrorOf([&] { engine.AddModule("a"); }).number, 457);
    EXPECT_EQ(ErrorOf([&] { engine.AddObject("BOX", nullptr); }).number, 457);
    EXPECT_EQ(ErrorOf([&] { a.AddCode("Box = 5"); }).number, 501);
    EXPECT_EQ(engine.Modules().size(), 2U);
    EXPECT_EQ(engine.FindModule("b"), &b);

    engine.Reset();
    EXPECT_EQ(engine.FindModule("A"), nullptr);
    EXPECT_EQ(ErrorOf([&] { engine.AddModule("A").AddCode("Box.Value = 1"); }).number, 424);
}

TEST(engine, hands_host_objects_through_by_member_name) {
    Engine engine;
    const auto box = Make<Box>();
    const auto boxes = Make<Boxes>();
    boxes->items["X"] = Make<Box>();
    box->list = boxes;
    engine.AddObject("Box", Handle<HostObject>(box));
    auto& module = engine.AddModule("M");
    module.AddCode(
        "Box.Value = 7\nn = 21 : Box.Twice n\nSet o = Box\no.LIST(\"X\").value = Box + n");
    EXPECT_EQ(module.Eval("n").AsInteger(), 42);
    EXPECT_EQ(boxes->items["X"]->value.AsInteger(), 49);
    EXPECT_EQ(module.Eval("TypeName(Box)").ToUtf8(), "cBox");

    module.AddCode("Sub Many : Dim i : For i = 1 To 100 : Box.Value = i : Next : End Sub");
    box->lookups = 0;
    module.Run("Many");
    EXPECT_EQ(box->lookups, 1) << "a call site asks for the slot once";

    EXPECT_EQ(ErrorOf([&] { module.AddCode("Box.Nope"); }).number, 438);
    EXPECT_EQ(ErrorOf([&] { module.AddCode("Box.Refuse"); }).description,
              "Invalid procedure call or argument: 'refused'");
    EXPECT_EQ(ErrorOf([&] { module.AddCode("Box.Broken"); }).number, 440);
    EXPECT_EQ(ErrorOf([&] { module.AddCode("For Each x In Box : Next"); }).number, 451);
}

TEST(engine, asks_the_host_for_boxes_and_time) {
    Callbacks callbacks;
    callbacks.message_box = [](std::string_view prompt, int buttons, std::string_view title) {
        return prompt == "p" && buttons == 4 && title == "t" ? 6 : 0;
    };
    callbacks.input_box = [](std::string_view, std::string_view,
                             std::string_view proposal) -> std::optional<std::string> {
        if (proposal.empty()) return std::nullopt;
        return std::string(proposal) + "!";
    };
    callbacks.now = [] { return 36526.5; };
    Engine engine(callbacks);
    auto& module = engine.AddModule("M");
    EXPECT_EQ(module.Eval("MsgBox(\"p\", vbYesNo, \"t\")").AsInteger(), 6);
    EXPECT_EQ(module.Eval("InputBox(\"p\", , \"ä\")").ToUtf8(), "ä!");
    EXPECT_TRUE(module.Eval("IsEmpty(InputBox(\"p\"))").AsInteger());
    EXPECT_EQ(module.Eval("CStr(Now)").ToUtf8(), "1/1/2000 12:00:00 PM");
}

TEST(engine, an_interrupt_ends_every_kind_of_endless_script_past_its_handlers) {
    int questions = 0;
    Callbacks callbacks;
    callbacks.interrupt = [&] { return ++questions > 3; };
    const char* const kEndless[] = {
        "On Error Resume Next : Do : x = x + 1 : Loop",
        "For i = 1 To 2 Step 0 : Next",
        "While True : Wend",
        "Sub S : End Sub : Do : S : Loop Until False",
        "Class G : Sub Class_Terminate : Dim g1 : Set g1 = New G : End Sub : End Class\n"
        "Set x = New G : Set x = Nothing : Do : Loop",
        "Set r = New RegExp : r.Pattern = \"(a+)+$\" : r.Test String(60, \"a\") & \"b\"",
    };
    for (const auto* text : kEndless) {
        SCOPED_TRACE(text);
        questions = 0;
        Engine engine(callbacks);
        auto& module = engine.AddModule("M");
        const auto error = ErrorOf([&] { module.AddCode(text); });
        EXPECT_TRUE(error.interrupted);
        EXPECT_EQ(error.number, 18);
        questions = -1000;
        EXPECT_EQ(module.Eval("1 + 1").AsInteger(), 2) << "the engine goes on";
    }
}

TEST(engine, a_hook_that_re_enters_itself_through_the_host_runs_out_of_stack) {
    class Caller : public HostObject {
      public:
        std::string_view ClassName() const override { return "Caller"; }
        const void* MemberTable() const override { return nullptr; }
        std::optional<Member> FindMember(std::u16string_view) const override { return Member{}; }
        Value Get(int, Arguments) override { return module->Run("Hook"); }
        Module* module = nullptr;
    };
    Engine engine;
    const auto caller = Make<Caller>();
    engine.AddObject("Host", Handle<HostObject>(caller));
    auto& module = engine.AddModule("M");
    caller->module = &module;
    module.AddCode("Sub Hook : Host.Fire : End Sub");
    EXPECT_EQ(ErrorOf([&] { module.Run("Hook"); }).number, 28);
    EXPECT_FALSE(engine.Running());
    EXPECT_EQ(module.Eval("2").AsInteger(), 2);
}

TEST(engine, objects_outlive_the_engine_without_their_code) {
    Value object;
    {
        Engine engine;
        auto& module = engine.AddModule("M");
        module.AddCode("Class C : Public Default Function V : V = 3 : End Function : End Class");
        object = module.Eval("New C");
        EXPECT_TRUE(object.IsObject());
    }
    Engine other;
    const auto box = Make<Box>();
    box->value = object;
    other.AddObject("Box", Handle<HostObject>(box));
    EXPECT_EQ(ErrorOf([&] { other.AddModule("M").AddCode("x = Box.Value + 1"); }).number, 438);
}

TEST(engine, a_text_that_nests_beyond_reason_is_refused) {
    Engine engine;
    auto& module = engine.AddModule("M");
    std::string deep;
    for (int i = 0; i < 5000; ++i)
        deep += "If True Then\n";
    EXPECT_EQ(ErrorOf([&] { module.AddCode(deep); }).number, 1001);
    EXPECT_EQ(ErrorOf([&] { module.AddCode("x = " + std::string(5000, '(')); }).number, 1001);
    EXPECT_EQ(ErrorOf([&] { module.AddCode("x = " + std::string(5000, '-') + "1"); }).number, 1001);
    std::string chain = "x = 1";
    for (int i = 0; i < 5000; ++i)
        chain += "+1";
    EXPECT_EQ(ErrorOf([&] { module.AddCode(chain); }).number, 1001);
    std::string long_text = "x = \"a\"";
    for (int i = 0; i < 5000; ++i)
        long_text += " & \"a\"";
    module.AddCode(long_text);
    EXPECT_EQ(module.Eval("Len(x)").AsInteger(), 5001);
}

TEST(engine, a_memory_limit_ends_in_the_language_s_error) {
    SetMemoryLimit(std::size_t{4} << 20);
    Engine engine;
    auto& module = engine.AddModule("M");
    for (const auto* text : {"Do : s = s & \"0123456789\" : Loop", "ReDim a(1000000)",
                             "Set d = CreateObject(\"Scripting.Dictionary\") : Do : d(i) = i : "
                             "i = i + 1 : Loop"}) {
        EXPECT_EQ(ErrorOf([&] { module.AddCode(text); }).number, 7) << text;
        module.AddCode("s = Empty : Set d = Nothing");
    }
    SetMemoryLimit(std::size_t{1} << 30);
}

} // namespace
} // namespace zentrel::vbscript
