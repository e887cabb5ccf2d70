#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "automation/script_host/script_failed.h"
#include "tests/script_host/scripted.h"

/// The program's objects in a script's hands: collections, arrays, arguments that come back, and
/// what can't be handed over. A case is a script and what it says in the status line.
namespace zentrel {
namespace {

using scripted::Device;
using scripted::Program;

struct Case {
    const char* name;
    const char* script;
    const char* says;
};

std::string Said(const std::string& script) {
    Program program;
    program.Load(Device({{"M", "Sub Say(text)\nfrmPart.StatusBar_SetString text\nEnd Sub\n"
                               "Sub Go\n" +
                                   script + "\nEnd Sub"}}));
    program.frm.StatusBar1.StatusBar_SetString("nothing");
    program.frm.guard.Run([&] { program.scripts.ExecuteScript("M", "Go"); });
    return program.boxes.shown.empty() ? program.frm.StatusBar1.StatusBar_GetString()
                                       : program.boxes.shown.front();
}

void Check(std::initializer_list<Case> cases) {
    for (const Case& test : cases)
        EXPECT_EQ(Said(test.script), test.says) << test.name;
}

TEST(ProgramObjects, collections_are_walked_counted_and_looked_into) {
    Check({
        {"by name in any case", "Say Part.PrgmBits(\"b\").ID", "B"},
        {"by position", "Say Part.PrgmBits(3).ID & Part.PrgmBits(1.2).ID", "CA"},
        {"item by its name", "Say Part.PrgmBits.Item(\"C\").ID", "C"},
        {"in order", "For Each f In Part.PrgmBits\ns = s & f.ID\nNext\nSay s", "ABC"},
        {"while something is added",
         "For Each r In Part.Registers\nIf r.ID = \"R1\" Then Part.AddRegister \"R2\", 3, 2, True\n"
         "s = s & r.ID\nNext\nSay s",
         "R0R1R2"},
        {"in a variable", "Set all = Part.Registers\nSay all.Count & all(2).ID", "2R1"},
        {"with", "With Part.Registers(\"R1\")\nSay .ID & .Value\nEnd With", "R11"},
        {"kept over a change of device",
         "Set f = Part.PrgmBits(\"A\")\nPart.ClearPLL\nSay f.ID & Part.PrgmBits.Count", "A0"},
    });
}

TEST(ProgramObjects, are_themselves_by_whatever_way_they_are_reached) {
    Check({
        {"an item", "Say Part.PrgmBits(\"A\") Is Part.PrgmBits(1)", "True"},
        {"another item", "Say Part.PrgmBits(\"A\") Is Part.PrgmBits(2)", "False"},
        {"the device", "Say Part.PrgmBits(1).Part Is Part", "True"},
        {"against nothing", "Say Part Is Nothing", "False"},
        {"kind by its name", "Say TypeName(Part) & TypeName(Part.PrgmBits(1))", "cPartcPrgmBits"},
        {"object or not", "Say IsObject(Part.Registers(1)) & IsObject(Part.ID)", "TrueFalse"},
    });
}

TEST(ProgramObjects, take_and_give_arrays) {
    Check({
        {"into a variable that held nothing",
         "Part.PrgmBits(\"A\").SetStringArray Array(\"x\", 2, True)\nDim a\n"
         "n = Part.PrgmBits(\"A\").GetStringArray(a)\nSay n & a(0) & a(1) & a(2)",
         "2x2True"},
        {"into an array that was there",
         "Part.PrgmBits(\"A\").SetStringArray Array(\"x\", \"y\")\nDim a()\nReDim a(7)\n"
         "Part.PrgmBits(\"A\").GetStringArray a\nSay UBound(a) & a(1)",
         "1y"},
        {"numbers",
         "Part.PrgmBits(\"A\").InitializeValueArray Array(\"1\", 2.5)\n"
         "Part.PrgmBits(\"A\").BitValue = 1\nSay Part.PrgmBits(\"A\").Value",
         "2.5"},
        {"of a burst's vector", "Say IsArray(Part.GenerateBurstRegister(5))", "True"},
    });
}

TEST(ProgramObjects, change_arguments_that_they_take_by_reference) {
    Check({
        {"a text", "b = \"1111\"\nh = Part.ConvertBinaryToHex(b)\nSay h", "F"},
        {"an expression in its place", "Say Part.ConvertBinaryToHex(\"11\" & \"11\")", "F"},
    });
}

TEST(ProgramObjects, answer_misuse_with_errors_that_a_script_can_handle) {
    struct Misuse {
        const char* line;
        int number;
    };
    for (const Misuse& misuse : {Misuse{"Part.PrgmBits(\"X\").Value = 1", 5},
                                 {"Part.PrgmBits(9).Value = 1", 5},
                                 {"Part.Nonsense", 438},
                                 {"Part.BurstRunning = True", 438},
                                 {"x = Part.PrgmBits(1).Units", 438},
                                 {"Part.PrgmBits(1).Value = \"high\"", 13},
                                 {"Part.PrgmBits(1).Value = Null", 94},
                                 {"Part.PrgmBits(1).Position = 40000", 6},
                                 {"Dim t(1, 1)\nPart.PrgmBits(1).SetValueArray t", 13},
                                 {"Part.PrgmBits(1).SetValueArray 5", 13},
                                 {"Part.PrgmBits(1).Value = Part", 13},
                                 {"Part.LoadRegister", 450},
                                 {"Part.LoadAll 1", 450},
                                 {"Part = 5", 501}}) {
        const std::string script = std::string("On Error Resume Next\n") + misuse.line +
                                   "\nSay Err.Number & \" \" & Err.Source";
        EXPECT_EQ(Said(script).substr(0, 4).find(std::to_string(misuse.number)), 0U)
            << misuse.line << " says " << Said(script);
    }
}

} // namespace
} // namespace zentrel
