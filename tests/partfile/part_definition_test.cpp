#include "partfile/part_definition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "tests/partfile/temp_folder.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

PartDefinition Read(const std::string& text) { return ReadPartDefinition(IniText(text), "p.ini"); }

std::vector<std::string> Told(const PartDefinition& part) {
    std::vector<std::string> lines;
    for (const Problem& problem : part.problems) {
        lines.push_back(problem.section + ' ' + problem.key + '=' + problem.value + " > " +
                        problem.used);
    }
    return lines;
}

// Each section with so many entries and not a key more: all defaults.
TEST(PartDefaults, of_the_set_up) {
    const SetupSection setup = Read("").setup;
    EXPECT_EQ(setup.version, "2.2.0");
    EXPECT_EQ(setup.commMode, "LPT");
    EXPECT_EQ(setup.registerLength, 24);
    EXPECT_EQ(setup.controlLength, 3);
    EXPECT_EQ(setup.address, 888);
    EXPECT_EQ(setup.clock, 1);
    EXPECT_EQ(setup.data, 2);
    EXPECT_EQ(setup.le, 3);
    EXPECT_FALSE(setup.invertClock);
    EXPECT_EQ(setup.partVersion, "a");
    EXPECT_EQ(setup.versionDescription, "No ini description");
    EXPECT_EQ(setup.readbackAddressRegister, "");
    EXPECT_EQ(setup.readbackAddressRegisterName, "");
}

TEST(PartDefaults, of_pins_and_registers) {
    const PartDefinition part = Read("[PINS]\nCOUNT=2\n[REGISTERS]\nCOUNT=102\n");
    ASSERT_EQ(part.pins.size(), 2U);
    EXPECT_EQ(part.pins[1].name, "Pin01");
    EXPECT_EQ(part.pins[1].location, 4);
    EXPECT_FALSE(part.pins[1].enabled);
    EXPECT_FALSE(part.pins[1].readBack);
    ASSERT_EQ(part.registers.size(), 102U);
    EXPECT_EQ(part.registers[7].name, "Reg07");
    EXPECT_EQ(part.registers[101].name, "Reg101");
    EXPECT_EQ(part.registers[101].mask, 3);
    EXPECT_EQ(part.registers[101].value, 101);
    EXPECT_TRUE(part.registers[101].lowByte);
    EXPECT_THAT(part.problems, IsEmpty());
}

TEST(PartDefaults, of_a_field) {
    const PartDefinition part = Read("[BITS]\nCOUNT=3\n");
    ASSERT_EQ(part.fields.size(), 3U);
    EXPECT_EQ(part.fieldCount, 3);
    const FieldEntry& field = part.fields[2];
    EXPECT_EQ(field.entry, 2);
    EXPECT_EQ(field.name, "Reg02");
    EXPECT_EQ(field.position, 1);
    EXPECT_EQ(field.length, 1);
    EXPECT_FALSE(field.display);
    EXPECT_EQ(field.frame, "Frame");
    EXPECT_EQ(field.control, FieldControl::kNone);
    EXPECT_THAT(field.values, IsEmpty());
    EXPECT_THAT(field.strings, IsEmpty());
    EXPECT_EQ(field.minimumValue, 0);
    EXPECT_EQ(field.maximumValue, 0);
    EXPECT_EQ(field.zeroValue, 0);
    EXPECT_EQ(field.stepValue, 1);
    for (const auto& text :
         {field.reg, field.units, field.linkedBits, field.mirrorBits, field.stepValueBitName,
          field.scriptName, field.scriptOnLoad, field.scriptBeforeProg, field.scriptAfterProg,
          field.greaterBits}) {
        EXPECT_EQ(text, "");
    }
    EXPECT_EQ(field.description, "Register [1]\n\r");
    EXPECT_TRUE(field.greaterThan);
    EXPECT_FALSE(field.polarity);
    EXPECT_EQ(field.polarityPosition, 0);
    EXPECT_FALSE(field.polarityInverted);
    EXPECT_FALSE(field.dataInverted);
}

TEST(PartDefaults, of_blocks_modes_and_scripts) {
    const PartDefinition part =
        Read("[PLLS]\nCOUNT=2\n[CLKDISTS]\nCOUNT=2\n[MODES]\nCOUNT=2\n[SCRIPTS]\nCOUNT=2\n");
    ASSERT_EQ(part.plls.size(), 2U);
    EXPECT_EQ(part.plls[1].name, "PLL01");
    EXPECT_EQ(part.plls[1].oscIn, 10);
    EXPECT_EQ(part.plls[1].n + part.plls[1].fractNum + part.plls[1].vcoMin, "");
    ASSERT_EQ(part.clkDists.size(), 2U);
    const ClkDistEntry& block = part.clkDists[1];
    EXPECT_EQ(block.name, "CLKDIST01");
    EXPECT_EQ(block.vcoCount, 1);
    EXPECT_EQ(block.clockCount, 0);
    EXPECT_THAT(block.channels, IsEmpty());
    EXPECT_EQ(block.displayType, "PLL_internalVCO");
    EXPECT_EQ(block.refOscFreq, 1);
    EXPECT_EQ(block.extSrcFreq, 2);
    EXPECT_EQ(block.intVcoFreq, 3);
    EXPECT_EQ(block.inputDivBypVal, -1);
    EXPECT_EQ(block.inputDivBypClearVal, -1);
    EXPECT_THAT(part.modes, ElementsAre("CAPTION00", "CAPTION01"));
    EXPECT_FALSE(part.executeScripts);
    ASSERT_EQ(part.scripts.size(), 2U);
    EXPECT_EQ(part.scripts[0].name, "");
    EXPECT_EQ(part.scripts[0].Code(), "\r\n"); // line 0
}

TEST(PartKeys, reach_their_places) {
    const PartDefinition part = Read(R"([setup]
ZENTREL_VERSION=2.3.0
COMM_MODE=USB
REGISTER_LENGTH=32
CONTROL_LENGTH=4
ADDRESS=&H278
CLOCK=5
DATA=6
LE=7
INVERTCLOCK=true
VERSION=b
VERSION_DESCRIPTION="  third try"
READBACK_ADDR_REG=R15
READBACK_ADDR_REG_NAME=READ
[PINS]
COUNT=3
NAME00=CE
LOCATION00=10
ENABLED00=1
NAME01=LD
LOCATION01=1503
READBACK01=True
NAME02=SW
READBACK02=TRUE
[REGISTERS]
COUNT=1
NAME00=R0
MASK00=&H7
VALUE00=2.5E3
LOWBYTE00=0
[MODES]
COUNT=1
MODE00=Receive
[SCRIPTS]
EXECUTE_SCRIPTS=TRUE
COUNT=1
SCRIPTNAME000=Init
SCRIPTLINES000=2
Init00000=Sub A
Init00002=End Sub
)");
    EXPECT_EQ(part.setup.version, "2.3.0");
    EXPECT_EQ(part.setup.commMode, "USB");
    EXPECT_EQ(part.setup.registerLength, 32);
    EXPECT_EQ(part.setup.controlLength, 4);
    EXPECT_EQ(part.setup.address, 0x278);
    EXPECT_EQ(part.setup.clock, 5);
    EXPECT_EQ(part.setup.data, 6);
    EXPECT_EQ(part.setup.le, 7);
    EXPECT_TRUE(part.setup.invertClock);
    EXPECT_EQ(part.setup.partVersion, "b");
    EXPECT_EQ(part.setup.versionDescription, "  third try");
    EXPECT_EQ(part.setup.readbackAddressRegister, "R15");
    EXPECT_EQ(part.setup.readbackAddressRegisterName, "READ");
    ASSERT_EQ(part.pins.size(), 3U);
    EXPECT_EQ(part.pins[0].name, "CE");
    EXPECT_EQ(part.pins[0].location, 10);
    EXPECT_TRUE(part.pins[0].enabled);
    EXPECT_TRUE(part.pins[1].readBack);
    EXPECT_EQ(part.pins[1].location, 1503);
    EXPECT_FALSE(part.pins[2].readBack); // only "True" makes a read-back pin
    ASSERT_EQ(part.registers.size(), 1U);
    EXPECT_EQ(part.registers[0].mask, 7);
    EXPECT_EQ(part.registers[0].value, 2500);
    EXPECT_FALSE(part.registers[0].lowByte);
    EXPECT_THAT(part.modes, ElementsAre("Receive"));
    EXPECT_TRUE(part.executeScripts);
    ASSERT_EQ(part.scripts.size(), 1U);
    EXPECT_EQ(part.scripts[0].lastLine, 2);
    EXPECT_EQ(part.scripts[0].Code(), "Sub A\r\n\r\nEnd Sub\r\n");
    EXPECT_THAT(Told(part), IsEmpty());
}

// Every text key of a block goes to a member of its own: its value is its name.
TEST(PartKeys, of_plls_and_clock_blocks_reach_their_places) {
    std::string text = "[PLLS]\nCOUNT=2\n";
    for (const auto* word :
         {"N", "R", "DOUBLER", "PD", "IPO", "TRI", "NP", "OSCINPIN", "OSCBIT", "FOUTPIN",
          "FINPIN", "CPOUTPIN", "FRACTNUM", "FRACTDEN", "OUT0_DIV", "OUT1_DIV", "OUT0PIN",
          "OUT1PIN", "VCO_MIN", "VCO_MAX", "OSC_MIN", "OSC_MAX", "FPD_MIN", "FPD_MAX",
          "N_CHECK_TYPE", "NP_MID_FREQUENCY", "N_CHECK_LOW_RANGE", "N_CHECK_HIGH_RANGE"}) {
        text.append(word).append("01=").append(word).append("\n");
    }
    text += "OSCIN01=19.2\n[CLKDISTS]\nCOUNT=2\nClocks01=4\nVCO01=2\nDISPLAY_TYPE01=Distribution\n"
            "CLK_DIV_0301=d\nCLK_DELAY_0301=y\nCLK_MUX_0301=m\nCLK_EN_0301=e\n"
            "RefOSC_Freq01=10\nExtSRC_Freq01=20.5\nIntVCO_Freq01=1E3\n"
            "INPUT_DIV_BYP_VAL01=1\nINPUT_DIV_BYP_CLEAR_VAL01=2\n";
    for (const auto* word : {"PLL", "NDelay", "RDelay", "INPUT_DIV", "INPUT_DIV_BYP", "INPUT_MUX",
                             "LF_C3", "LF_R3", "LF_C4", "LF_R4", "LF_C3C4"}) {
        text.append(word).append("01=").append(word).append("\n");
    }
    const PartDefinition part = Read(text);
    const PllEntry& pll = part.plls.at(1);
    EXPECT_EQ(pll.oscIn, 19.2);
    EXPECT_THAT(
        (std::vector<std::string>{
            pll.n,        pll.r,        pll.doubler,    pll.pd,             pll.ipo,
            pll.tri,      pll.np,       pll.oscInPin,   pll.oscBit,         pll.fOutPin,
            pll.fInPin,   pll.cpOutPin, pll.fractNum,   pll.fractDen,       pll.out0Div,
            pll.out1Div,  pll.out0Pin,  pll.out1Pin,    pll.vcoMin,         pll.vcoMax,
            pll.oscMin,   pll.oscMax,   pll.fpdMin,     pll.fpdMax,         pll.nCheckType,
            pll.npMidFrequency, pll.nCheckLowRange, pll.nCheckHighRange}),
        ElementsAre("N", "R", "DOUBLER", "PD", "IPO", "TRI", "NP", "OSCINPIN", "OSCBIT",
                    "FOUTPIN", "FINPIN", "CPOUTPIN", "FRACTNUM", "FRACTDEN", "OUT0_DIV",
                    "OUT1_DIV", "OUT0PIN", "OUT1PIN", "VCO_MIN", "VCO_MAX", "OSC_MIN", "OSC_MAX",
                    "FPD_MIN", "FPD_MAX", "N_CHECK_TYPE", "NP_MID_FREQUENCY", "N_CHECK_LOW_RANGE",
                    "N_CHECK_HIGH_RANGE"));
    const ClkDistEntry& block = part.clkDists.at(1);
    EXPECT_THAT((std::vector<std::string>{block.pll, block.nDelay, block.rDelay, block.inputDiv,
                                          block.inputDivByp, block.inputMux, block.lfC3,
                                          block.lfR3, block.lfC4, block.lfR4, block.lfC3C4,
                                          block.displayType}),
                ElementsAre("PLL", "NDelay", "RDelay", "INPUT_DIV", "INPUT_DIV_BYP", "INPUT_MUX",
                            "LF_C3", "LF_R3", "LF_C4", "LF_R4", "LF_C3C4", "Distribution"));
    EXPECT_EQ(block.vcoCount, 2);
    EXPECT_EQ(block.refOscFreq, 10);
    EXPECT_EQ(block.extSrcFreq, 20.5);
    EXPECT_EQ(block.intVcoFreq, 1000);
    EXPECT_EQ(block.inputDivBypVal, 1);
    EXPECT_EQ(block.inputDivBypClearVal, 2);
    ASSERT_EQ(block.channels.size(), 4U);
    EXPECT_EQ(block.channels[3].divider, "d");
    EXPECT_EQ(block.channels[3].delay, "y");
    EXPECT_EQ(block.channels[3].mux, "m");
    EXPECT_EQ(block.channels[3].enable, "e");
    EXPECT_EQ(block.channels[1].divider, "");
}

TEST(PartFields, take_all_their_keys) {
    const PartDefinition part = Read(R"([BITS]
COUNT=1
REG00=R0
NAME00=N
POS00=-1
LEN00=200
DISPLAY00=True
FRAME00=Counters
TYPE00=Counter
MINIMUMVALUE00=-1.5
MAXIMUMVALUE00=4095
ZEROVALUE00=2
STEPVALUE00=0.25
UNITS00=kHz
LINKEDBITS00=N_HI
MIRRORBITS00=N_MIRROR
STEPVALUEBITNAME00=N_STEP
script_name00=S
script_on_load00=L
script_before_prog00=B
script_after_prog00=A
GREATERBITS00=R
GREATERTHAN00=FALSE
POLARITY00=true
POLARITYPOSITION00=7
POLARITYINVERTED00=1
DATAINVERTED00=-1
)");
    const FieldEntry& field = part.fields.at(0);
    EXPECT_EQ(field.reg, "R0");
    EXPECT_EQ(field.position, -1);
    EXPECT_EQ(field.length, 200);
    EXPECT_TRUE(field.display);
    EXPECT_EQ(field.frame, "Counters");
    EXPECT_EQ(field.minimumValue, -1.5);
    EXPECT_EQ(field.maximumValue, 4095);
    EXPECT_EQ(field.zeroValue, 2);
    EXPECT_EQ(field.stepValue, 0.25);
    EXPECT_THAT((std::vector<std::string>{field.units, field.linkedBits, field.mirrorBits,
                                          field.stepValueBitName, field.scriptName,
                                          field.scriptOnLoad, field.scriptBeforeProg,
                                          field.scriptAfterProg, field.greaterBits}),
                ElementsAre("kHz", "N_HI", "N_MIRROR", "N_STEP", "S", "L", "B", "A", "R"));
    EXPECT_FALSE(field.greaterThan);
    EXPECT_TRUE(field.polarity);
    EXPECT_EQ(field.polarityPosition, 7);
    EXPECT_TRUE(field.polarityInverted);
    EXPECT_TRUE(field.dataInverted);
    EXPECT_THAT(part.problems, IsEmpty());
}

TEST(PartFields, get_their_control_from_the_exact_type) {
    const PartDefinition part = Read("[BITS]\nCOUNT=6\nTYPE00=Bit\nTYPE01=Counter\nTYPE02=List\n"
                                     "TYPE03=bit\nTYPE04=Bits\nTYPE05=\n");
    std::vector<FieldControl> controls;
    for (const FieldEntry& field : part.fields) controls.push_back(field.control);
    EXPECT_THAT(controls, ElementsAre(FieldControl::kCheckBox, FieldControl::kSpinBox,
                                      FieldControl::kList, FieldControl::kNone,
                                      FieldControl::kNone, FieldControl::kNone));
}

TEST(PartFields, have_lists_of_texts_of_numbers_or_of_numbers_with_codes) {
    const PartDefinition part = Read(R"([BITS]
COUNT=5
COUNT01=3
VAL0100=Off
VAL0102=On
COUNT02=3
FORMAT02=Number
VAL0200=1.5
VAL0201=x
COUNT03=2
FORMAT03=string
VAL0301=9
COUNTB03=3
VALB0300=4
COUNT04=1
)");
    EXPECT_THAT(part.fields[0].strings, IsEmpty());
    EXPECT_THAT(part.fields[1].strings, ElementsAre("Off", "01", "On"));
    EXPECT_THAT(part.fields[1].values, IsEmpty());
    EXPECT_THAT(part.fields[2].values, ElementsAre(1.5, 1, 2));
    EXPECT_THAT(part.fields[2].strings, IsEmpty());
    EXPECT_THAT(part.fields[3].values, ElementsAre(0, 9));
    EXPECT_THAT(part.fields[3].strings, ElementsAre("4", "01", "02"));
    EXPECT_THAT(part.fields[4].strings, ElementsAre("00"));
    EXPECT_EQ(part.fields[4].name, "Reg04");
    EXPECT_THAT(Told(part), ElementsAre("BITS VAL0201=x > 1"));
}

TEST(PartFields, describe_themselves_with_line_feed_ahead_of_carriage_return) {
    const PartDefinition part = Read("[BITS]\nCOUNT=4\n"
                                     "REG00=R1\nPOS00=5\nDESCRIPTION00=what\n"
                                     "REG01=R1\nPOS01=5\nLEN01=4\nDESCRIPTIONWHY01=why\n"
                                     "DESCRIPTION02=what\nDESCRIPTIONWHY02=why\n"
                                     "POS03=32767\nLEN03=32767\n");
    EXPECT_EQ(part.fields[0].description, "Register R1[5]\n\rwhat");
    EXPECT_EQ(part.fields[1].description, "Register R1[8:5]     Length: 4\n\rwhy");
    EXPECT_EQ(part.fields[2].description, "Register [1]\n\rwhat\n\r\n\rwhy");
    EXPECT_EQ(part.fields[3].description, "Register [65533:32767]     Length: 32767\n\r");
}

TEST(PartProblems, a_value_of_the_wrong_kind_gives_the_default_and_is_told) {
    const PartDefinition part = Read(R"([SETUP]
REGISTER_LENGTH=
ADDRESS=&HXYZ
CLOCK=40000
INVERTCLOCK=yes
[PINS]
COUNT=abc
[REGISTERS]
COUNT=1
MASK00=1,5
VALUE00=&H10
[PLLS]
COUNT=1
OSCIN00=1E999
[CLKDISTS]
COUNT=2
VCO00=1.9
Clocks00=9
Clocks01=-2
)");
    EXPECT_EQ(part.setup.registerLength, 24);
    EXPECT_EQ(part.setup.address, 888);
    EXPECT_THAT(part.pins, IsEmpty());
    EXPECT_EQ(part.registers[0].value, 0);
    EXPECT_EQ(part.plls[0].oscIn, 10);
    EXPECT_EQ(part.clkDists[0].vcoCount, 1);
    EXPECT_EQ(part.clkDists[0].clockCount, 8);
    EXPECT_EQ(part.clkDists[1].clockCount, 0);
    EXPECT_THAT(Told(part),
                ElementsAre("SETUP REGISTER_LENGTH= > 24", "SETUP ADDRESS=&HXYZ > 888",
                            "SETUP CLOCK=40000 > 1", "SETUP INVERTCLOCK=yes > False",
                            "PINS COUNT=abc > 0", "REGISTERS MASK00=1,5 > 3",
                            "REGISTERS VALUE00=&H10 > 0", "PLLS OSCIN00=1E999 > 10",
                            "CLKDISTS Clocks00=9 > 8", "CLKDISTS Clocks01=-2 > 0"));
    EXPECT_EQ(part.problems[0].file, "p.ini");
}

TEST(PartProblems, of_entries_of_one_name_the_first_is_kept_and_none_changes_its_number) {
    const PartDefinition part = Read(R"([PINS]
COUNT=3
NAME00=CE
NAME01=ce
LOCATION01=oops
NAME02=LD
[REGISTERS]
COUNT=3
NAME00=R0
NAME01=R0
NAME02=R1
[BITS]
COUNT=4
NAME00=N
TYPE00=Bit
NAME01=N
TYPE01=Counter
NAME02=n
TYPE02=List
NAME03=M
TYPE03=Counter
[PLLS]
COUNT=2
NAME00=PLL
NAME01=PLL
)");
    ASSERT_EQ(part.pins.size(), 2U);
    EXPECT_EQ(part.pins[1].name, "LD");
    EXPECT_EQ(part.pins[1].entry, 2);
    ASSERT_EQ(part.registers.size(), 2U);
    EXPECT_EQ(part.registers[1].entry, 2);
    // A field that is no counter stays: its keys go to the field that has the name.
    ASSERT_EQ(part.fields.size(), 3U);
    EXPECT_FALSE(part.fields[0].repeatsName);
    EXPECT_EQ(part.fields[1].entry, 2);
    EXPECT_TRUE(part.fields[1].repeatsName);
    EXPECT_FALSE(part.fields[2].repeatsName);
    EXPECT_EQ(part.plls.size(), 1U);
    EXPECT_THAT(part.leftOut,
                ElementsAre(LeftOutEntry{"PINS", "ce", 1, 0}, LeftOutEntry{"REGISTERS", "R0", 1, 0},
                            LeftOutEntry{"BITS", "N", 1, 0}, LeftOutEntry{"PLLS", "PLL", 1, 0}));
    EXPECT_THAT(Told(part),
                ElementsAre("PINS NAME01=ce > entry 00, which has the name already",
                            "REGISTERS NAME01=R0 > entry 00, which has the name already",
                            "BITS NAME01=N > entry 00, which has the name already",
                            "PLLS NAME01=PLL > entry 00, which has the name already"));
}

std::chrono::milliseconds TimeOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start);
}

TEST(PartProblems, the_largest_counts_with_nothing_behind_them_are_read_quickly) {
    std::string text;
    for (const auto* section : {"PINS", "REGISTERS", "BITS", "PLLS", "CLKDISTS", "MODES"}) {
        text.append("[").append(section).append("]\nCOUNT=32767\n");
    }
    text += "[SCRIPTS]\nCOUNT=32767\nSCRIPTLINES000=32767\n";
    PartDefinition part;
    EXPECT_LT(TimeOf([&] { part = Read(text); }), std::chrono::seconds(5));
    EXPECT_EQ(part.fields.size(), 32767U);
    EXPECT_EQ(part.registers.size(), 32767U);
}

TEST(PartProblems, lists_that_would_fill_the_memory_are_left_empty_and_told) {
    std::string text = "[BITS]\nCOUNT=200\n";
    for (int i = 0; i < 200; ++i) {
        text.append("COUNT").append(i < 10 ? "0" : "").append(std::to_string(i)).append("=32767\n");
    }
    const PartDefinition part = Read(text);
    EXPECT_EQ(part.fields[0].strings.size(), 32767U);
    EXPECT_THAT(part.fields[199].strings, IsEmpty());
    EXPECT_EQ(part.problems.size(), 200U - kMaxListedEntries / 32767);
    EXPECT_EQ(part.problems.front().key, "COUNT30");
}

TEST(PartProblems, a_file_that_cant_be_read_is_told_and_gives_the_defaults) {
    const TempFolder folder;
    IniFiles files{AppPath(folder.Path())};
    std::filesystem::create_directory(folder / "p.ini");
    const std::string path = files.Folder().PartFilePath("p");
    const PartDefinition part = LoadPartDefinition(files, path);
    EXPECT_EQ(part.setup.registerLength, 24);
    EXPECT_EQ(part.problems,
              (std::vector<Problem>{{path, "", "", "Is a directory", "the defaults of all keys"}}));
    EXPECT_TRUE(files.TakeWriteFailures().empty());
    EXPECT_THAT(ReadPartDefinition(files, files.Folder().PartFilePath("missing")).problems,
                IsEmpty());
}

TEST(PartProblems, files_of_rubbish_give_a_definition) {
    const TempFolder folder;
    IniFiles files{AppPath(folder.Path())};
    std::string noise;
    std::uint32_t seed = 1;
    for (int i = 0; i < 200'000; ++i) {
        seed = seed * 1664525U + 1013904223U;
        noise += static_cast<char>(seed >> 24U);
    }
    const std::string nuls(100'000, '\0');
    for (const std::string& text : {std::string(), noise, nuls, "[BITS]\nCOUNT=3\n" + nuls}) {
        TempFolder::Write(folder / "p.ini", text);
        const PartDefinition part = LoadPartDefinition(files, files.Folder().PartFilePath("p"));
        EXPECT_EQ(part.setup.commMode, "LPT");
        EXPECT_EQ(TempFolder::Read(folder / "p.ini").substr(0, text.size()), text);
    }
}

} // namespace
} // namespace zentrel
