#include "partfile/problems.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>

#include "tests/partfile/read_part.h"
#include "tests/partfile/temp_folder.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Each section with so many entries and not a key more: all defaults.
// Every text key of a block goes to a member of its own: its value is its name.
TEST(PartProblems, a_value_of_the_wrong_kind_gives_the_default_and_is_told) {
    const PartDefinition part = ReadPart(R"([SETUP]
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
    EXPECT_THAT(Told(part), ElementsAre("SETUP REGISTER_LENGTH= > 24", "SETUP ADDRESS=&HXYZ > 888",
                                        "SETUP CLOCK=40000 > 1", "SETUP INVERTCLOCK=yes > False",
                                        "PINS COUNT=abc > 0", "REGISTERS MASK00=1,5 > 3",
                                        "REGISTERS VALUE00=&H10 > 0", "PLLS OSCIN00=1E999 > 10",
                                        "CLKDISTS Clocks00=9 > 8", "CLKDISTS Clocks01=-2 > 0"));
    EXPECT_EQ(part.problems[0].file, "p.ini");
}

TEST(PartProblems, of_entries_of_one_name_the_first_is_kept_and_none_changes_its_number) {
    const PartDefinition part = ReadPart(R"([PINS]
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
[CLKDISTS]
COUNT=3
NAME00=A
NAME01=a
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
    ASSERT_EQ(part.clkDists.size(), 2U);
    EXPECT_EQ(part.clkDists[1].entry, 2);
    EXPECT_THAT(part.leftOut,
                ElementsAre(LeftOutEntry{"PINS", "ce", 1, 0}, LeftOutEntry{"REGISTERS", "R0", 1, 0},
                            LeftOutEntry{"BITS", "N", 1, 0}, LeftOutEntry{"PLLS", "PLL", 1, 0},
                            LeftOutEntry{"CLKDISTS", "a", 1, 0}));
    EXPECT_THAT(Told(part),
                ElementsAre("PINS NAME01=ce > entry 00, which has the name already",
                            "REGISTERS NAME01=R0 > entry 00, which has the name already",
                            "BITS NAME01=N > entry 00, which has the name already",
                            "PLLS NAME01=PLL > entry 00, which has the name already",
                            "CLKDISTS NAME01=a > entry 00, which has the name already"));
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
    EXPECT_LT(TimeOf([&] { part = ReadPart(text); }), std::chrono::seconds(5));
    EXPECT_EQ(part.fields.size(), 32767U);
    EXPECT_EQ(part.registers.size(), 32767U);
}

TEST(PartProblems, lists_that_would_fill_the_memory_are_left_empty_and_told) {
    std::string text = "[BITS]\nCOUNT=200\n";
    for (int i = 0; i < 200; ++i) {
        text.append("COUNT").append(i < 10 ? "0" : "").append(std::to_string(i)).append("=32767\n");
    }
    const PartDefinition part = ReadPart(text);
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
    EXPECT_EQ(part.problems, (std::vector<Problem>{{folder / "p.ini", "", "", "Is a directory",
                                                    "the defaults of all keys"}}));
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

TEST(ProblemsMessage, has_at_most_twenty_lines_and_the_count_of_the_rest) {
    std::vector<Problem> problems(23, {"p.ini", "BITS", "LEN00", "abc", "1"});
    problems[1].value = std::string(200, 'x') + "\n";
    problems[2] = {"p.ini", "", "", "Permission denied", "the defaults of all keys"};
    const std::string message = ProblemsMessage(problems);
    EXPECT_EQ(std::count(message.begin(), message.end(), '\n'), 20);
    EXPECT_TRUE(message.starts_with(
        "p.ini [BITS] LEN00=abc (used 1)\np.ini [BITS] LEN00=" + std::string(60, 'x') +
        "... (used 1)\n" + "p.ini: Permission denied (used the defaults of all keys)\n"));
    EXPECT_TRUE(message.ends_with("\n... and 3 more"));
    EXPECT_EQ(ProblemsMessage({}), "");
}

} // namespace
} // namespace zentrel
