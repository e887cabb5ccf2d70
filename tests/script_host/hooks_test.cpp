#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "automation/script_host/script_failed.h"
#include "device/number_text.h"
#include "tests/script_host/scripted.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

using scripted::Device;
using scripted::Program;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kHooksOfA = "script_name00=M\nscript_before_prog00=Before\n"
                                  "script_after_prog00=After\n";
constexpr const char* kFollow =
    "Sub Before\nPart.PrgmBits(\"C\").Value = 9\nEnd Sub\n"
    "Sub After\n"
    "Part.PrgmBits(\"B\").BitValue = Part.PrgmBits(\"A\").BitValue + 1\n"
    "End Sub";

TEST(Hooks, a_field_that_follows_another_does_so_for_bits_toggles_and_other_scripts) {
    Program program;
    program.Load(Device({{"M", kFollow}}, kHooksOfA));
    program.part.PrgmBits("A").SetBitValue(5);
    EXPECT_EQ(program.B(), 6);
    EXPECT_EQ(program.part.PrgmBits("C").BitValue(), 9);
    program.part.PrgmBits("A").ToggleBit();
    EXPECT_EQ(program.B(), 7);
    // `Value` doesn't go through the hooks on a plain field.
    program.part.PrgmBits("A").SetValue(40);
    EXPECT_EQ(program.B(), 7);
    EXPECT_THAT(program.boxes.shown, ElementsAre());
}

TEST(Hooks, without_the_master_switch_modules_compile_and_only_the_load_hook_is_asked) {
    const std::string load = "Function Hook_CheckProgramRegister_LoadAll(name)\n"
                             "If name = \"R0\" Then frmPart.logged_errors = Array(name)\n"
                             "Hook_CheckProgramRegister_LoadAll = 1\nEnd Function";
    Program program;
    program.Load(
        Device({{"M", kFollow}, {"Hook_CheckProgramRegister_LoadAll", load}}, kHooksOfA, false));
    program.part.PrgmBits("A").SetBitValue(5);
    EXPECT_EQ(program.B(), 0);
    LoadAll(program.part);
    EXPECT_THAT(program.session.logged_errors, ElementsAre("R0"));
    // A syntax error is told, whatever the switch says.
    program.Load(Device({{"M", "Sub"}}, {}, false));
    EXPECT_EQ(program.boxes.shown.size(), 2);
}

TEST(Hooks,
     on_load_hooks_run_in_the_fields_order_before_the_refresh_and_their_errors_are_passed_over) {
    const std::string code = "Dim order\n"
                             "Sub First\norder = order & \"1\"\nEnd Sub\n"
                             "Sub Fails\nPart.PrgmBits(\"nobody\").Value = 1\nEnd Sub\n"
                             "Sub Third\nfrmPart.StatusBar_SetString order & \"3\"\n"
                             "Part.PrgmBits(\"A\").BitValue = 17\nEnd Sub";
    Program program;
    program.Load(Device({{"M", code}}, "script_name00=M\nscript_on_load00=First\n"
                                       "script_name01=M\nscript_on_load01=Fails\n"
                                       "script_name02=M\nscript_on_load02=Third\n"));
    EXPECT_EQ(program.A(), 17);
    EXPECT_THAT(program.boxes.shown, ElementsAre());
}

TEST(Hooks, a_failure_names_module_procedure_line_text_and_error_in_one_message) {
    Program program;
    program.Load(Device({{"Follow", "Sub After\n\n  x = CInt(40000)\nEnd Sub"}},
                        "script_name00=Follow\nscript_after_prog00=After\n"));
    program.frm.guard.Run([&] { program.part.PrgmBits("A").SetBitValue(5); });
    EXPECT_THAT(program.boxes.shown,
                ElementsAre("The script failed in module Follow, procedure After, line 3:\n"
                            "    x = CInt(40000)\nOverflow (error 6)"));
    // The change itself was sound.
    EXPECT_EQ(program.A(), 5);
}

TEST(Hooks, modules_and_procedures_that_arent_there_fail_the_operation) {
    struct Case {
        const char* hooks;
        const char* told;
    };
    for (const Case& test : {
             Case{"script_name00=Nobody\nscript_before_prog00=Before\n", "\"Nobody\""},
             Case{"script_before_prog00=Before\n", "\"\""},
             Case{"script_name00=M\nscript_before_prog00=Nobody\n", "procedure Nobody"},
         }) {
        Program program;
        program.Load(Device({{"M", kFollow}}, test.hooks));
        try {
            program.part.PrgmBits("A").SetBitValue(5);
            ADD_FAILURE() << test.hooks;
        } catch (const ScriptFailed& failure) {
            EXPECT_THAT(failure.what(), HasSubstr(test.told));
        }
    }
}

TEST(Hooks, a_hook_that_writes_its_own_field_ends_in_out_of_stack_space) {
    Program program;
    program.Load(Device({{"M", "Sub Again\nPart.PrgmBits(\"A\").BitValue = 1\nEnd Sub"}},
                        "script_name00=M\nscript_before_prog00=Again\n"));
    program.frm.guard.Run([&] { program.part.PrgmBits("A").SetBitValue(5); });
    ASSERT_EQ(program.boxes.shown.size(), 1);
    EXPECT_THAT(program.boxes.shown[0], HasSubstr("module M, procedure Again, line 2"));
    EXPECT_THAT(program.boxes.shown[0], HasSubstr("Out of stack space"));
    program.part.PrgmBits("B").SetBitValue(3);
    EXPECT_EQ(program.B(), 3);
}

TEST(Hooks, a_failing_hook_inside_a_script_is_an_error_that_the_script_can_handle) {
    const std::string code = "Sub Try\nOn Error Resume Next\nPart.PrgmBits(\"A\").BitValue = 2\n"
                             "frmPart.StatusBar_SetString Err.Number & \" \" & Err.Description\n"
                             "End Sub\nSub Fails\nErr.Raise 1234, \"me\", \"too hot\"\nEnd Sub";
    Program program;
    program.Load(Device({{"M", code}}, "script_name00=M\nscript_before_prog00=Fails\n"
                                       "script_name01=M\nscript_after_prog01=Try\n"));
    program.part.PrgmBits("B").SetBitValue(1);
    EXPECT_EQ(program.frm.StatusBar1.StatusBar_GetString(), "1234 too hot");
}

TEST(Hooks, the_load_hook_decides_which_registers_go_out) {
    const std::string code = "Function Hook_CheckProgramRegister_LoadAll(name)\n"
                             "asked = asked & name & \" \"\n"
                             "frmPart.StatusBar_SetString asked\n"
                             "Hook_CheckProgramRegister_LoadAll = -(name <> \"R0\")\nEnd Function\n"
                             "Dim asked";
    Program program;
    program.Load(Device({{"Hook_CheckProgramRegister_LoadAll", code}}));
    LoadAll(program.part);
    EXPECT_EQ(program.frm.StatusBar1.StatusBar_GetString(), "R0 R1 ");
    ASSERT_EQ(program.bench.board.newest(), 1);
    EXPECT_EQ(program.bench.board.Since(0).front().registerName, "R1");
    // Text where a number has to come is a failure of that load.
    program.Load(Device({{"Hook_CheckProgramRegister_LoadAll",
                          "Function Hook_CheckProgramRegister_LoadAll(name)\n"
                          "Hook_CheckProgramRegister_LoadAll = \"often\"\nEnd Function"}}));
    EXPECT_THROW(LoadAll(program.part), ScriptFailed);
}

TEST(Hooks, a_device_change_takes_the_old_code_away) {
    Program program;
    program.Load(Device({{"M", kFollow}}, kHooksOfA));
    EXPECT_TRUE(program.scripts.HasModule("M"));
    EXPECT_FALSE(program.scripts.HasModule("m"));
    program.Load(Device({}), "QVX9002");
    EXPECT_FALSE(program.scripts.HasModule("M"));
}

TEST(Hooks, a_script_may_load_another_device_and_run_on) {
    Program program;
    program.folder.WritePart("QVX9002", Device({{"Other", "Sub Go\nEnd Sub"}}));
    program.Load(Device({{"M", "Sub Change\nfrmPart.SetupPartForm \"QVX9002\"\n"
                               "Part.PrgmBits(\"B\").BitValue = 44\nEnd Sub"}},
                        "script_name00=M\nscript_before_prog00=Change\n"));
    program.frm.guard.Run([&] { program.scripts.ExecuteScript("M", "Change"); });
    EXPECT_EQ(program.part.ID, "QVX9002");
    EXPECT_EQ(program.B(), 44);
    EXPECT_TRUE(program.scripts.HasModule("Other"));
    EXPECT_FALSE(program.scripts.HasModule("M"));
}

TEST(Hooks, an_on_load_hook_that_loads_its_own_device_comes_to_an_end) {
    Program program;
    program.Load(Device({{"M", "Sub Again\nfrmPart.SetupPartForm \"QVX9001\"\nEnd Sub"}},
                        "script_name00=M\nscript_on_load00=Again\n"));
    EXPECT_FALSE(program.scripts.Running());
    EXPECT_EQ(program.part.PrgmBits.Count(), 3);
    program.Load(Device({{"M", kFollow}}, kHooksOfA));
    program.part.PrgmBits("A").SetBitValue(5);
    EXPECT_EQ(program.B(), 6);
}

TEST(Hooks, two_modules_of_one_name_are_a_failure_of_the_load) {
    Program program;
    program.Load(Device({{"M", kFollow}, {"M", kFollow}}, kHooksOfA));
    ASSERT_EQ(program.boxes.shown.size(), 1);
    EXPECT_THAT(program.boxes.shown[0], HasSubstr("SCRIPTNAME001"));
    EXPECT_EQ(program.part.PrgmBits.Count(), 3);
}

TEST(ScriptBoxes, message_and_input_boxes_of_scripts_are_the_programs_own) {
    Program program;
    program.Load(Device({{"M", "Sub Talk\n"
                               "If MsgBox(\"Sure?\", 4 + 32, \"Load\") = 6 Then a = \"yes\"\n"
                               "frmPart.StatusBar_SetString a & InputBox(\"How much?\", , \"10\")\n"
                               "End Sub"}}));
    program.boxes.answer = kMsgYes;
    program.scripts.ExecuteScript("M", "Talk");
    EXPECT_THAT(program.boxes.shown, ElementsAre("Sure?", "How much?"));
    EXPECT_EQ(program.frm.StatusBar1.StatusBar_GetString(), "yes10!");
}

TEST(ScriptBoxes, unattended_each_set_of_buttons_answers_with_its_default) {
    struct Case {
        int buttons;
        int answer;
    };
    Messages nobody;
    for (const Case& test : {Case{0, kMsgOk}, Case{1, kMsgOk}, Case{1 + 256, kMsgCancel},
                             Case{2 + 512, kMsgIgnore}, Case{3, kMsgYes}, Case{4 + 32, kMsgYes},
                             Case{4 + 256, kMsgNo}, Case{5 + 768, kMsgCancel}, Case{15, kMsgOk}}) {
        EXPECT_EQ(nobody.MessageBox("", "", test.buttons), test.answer) << test.buttons;
    }
}

TEST(Interrupt, the_key_asks_and_stopping_ends_the_script_past_its_own_handlers) {
    Program program;
    program.Load(Device({{"M", "Sub Endless\nOn Error Resume Next\nn = 0\n"
                               "Do\nn = n + 1\nLoop\nEnd Sub"}}));
    int looks = 0;
    program.scripts.BreakPressed = [&] { return ++looks == 2; };
    program.boxes.answer = kMsgYes;
    program.frm.guard.Run([&] { program.scripts.ExecuteScript("M", "Endless"); });
    ASSERT_EQ(program.boxes.shown.size(), 2);
    EXPECT_THAT(program.boxes.shown[0], HasSubstr("A script is running. Stop it?"));
    EXPECT_THAT(program.boxes.shown[1],
                HasSubstr("The script was stopped in module M, procedure Endless"));
    EXPECT_FALSE(program.scripts.Running());
}

TEST(Interrupt, a_script_that_is_let_go_on_comes_to_its_end) {
    Program program;
    program.Load(Device({{"M", "Sub Wait\nt = Timer\nDo While Timer - t < 0.6\nLoop\n"
                               "Part.PrgmBits(\"A\").BitValue = 3\nEnd Sub"}}));
    program.scripts.BreakPressed = [] { return true; };
    program.boxes.answer = kMsgNo;
    program.scripts.ExecuteScript("M", "Wait");
    EXPECT_FALSE(program.boxes.shown.empty());
    EXPECT_EQ(program.A(), 3);
}

TEST(Interrupt, stopping_a_hook_stops_the_script_that_triggered_it_too) {
    Program program;
    program.Load(
        Device({{"M", "Sub Outer\nOn Error Resume Next\nPart.PrgmBits(\"A\").BitValue = 1\n"
                      "Part.PrgmBits(\"B\").BitValue = 99\nEnd Sub\n"
                      "Sub Inner\nDo\nLoop\nEnd Sub"}},
               "script_name00=M\nscript_after_prog00=Inner\n"));
    program.scripts.BreakPressed = [] { return true; };
    program.boxes.answer = kMsgYes;
    EXPECT_THROW(program.scripts.ExecuteScript("M", "Outer"), ScriptFailed);
    EXPECT_EQ(program.B(), 0);
}

} // namespace
} // namespace zentrel
