#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "device/number_text.h"
#include "tests/session/window.h"

namespace zentrel {
namespace {

using testing::HasSubstr;
using window::Folder;
using window::kSmallPart;
using window::Window;

// Whatever stands in a part file: a device stands, can be touched everywhere, and the next one
// loads.
class BadInput : public testing::Test {
  protected:
    void SetUp() override { window.Start(); }

    void LoadAndTouch(const std::string& name) {
        window.boxes.shown.clear();
        const bool loaded = frm.guard.Run([&] { window.Load(name); });
        EXPECT_TRUE(loaded) << name;
        EXPECT_EQ(part.ID, name);
        EXPECT_FALSE(part.Updating) << name;
        EXPECT_TRUE(frm.tabPart.Visible) << name;
        Touch();
    }
    void Touch() {
        const auto run = [this](auto event) { frm.guard.Run(event); };
        for (int row = 0; row < std::min(frm.registers.RowCount(), 4); ++row) {
            run([&] { frm.registers.ClickBits(row, 0); });
            run([&] { frm.registers.KeyPress(row, '1'); });
            run([&] { frm.registers.ClickLoad(row); });
        }
        run([&] { frm.registers.ClickBitOrder(); });
        for (CheckBox& box : frm.bits.chkPrgmBit)
            run([&] { box.SetValue(!box.Value); });
        for (std::size_t i = 0; i < frm.bits.txtCntrVal.size(); ++i) {
            if (!frm.bits.txtCntrVal[i].Visible) continue;
            run([&] { frm.bits.SpinUp(static_cast<int>(i)); });
            run([&] { frm.bits.EnterCounter(static_cast<int>(i)); });
        }
        run([&] { part.UpdateDisplays(); });
    }

    Folder folder;
    Window window{folder};
    FrmPart& frm = window.frm;
    cPart& part = window.part;
};

TEST_F(BadInput, files_that_are_no_part_files) {
    folder.Write("empty.ini", "");
    folder.Write("nul.ini", std::string("[SETUP]\0COUNT=\0\0", 16));
    std::string bytes;
    for (int i = 0; i < 5000; ++i)
        bytes += static_cast<char>(i * 37 % 256);
    folder.Write("binary.ini", bytes);
    for (const char* name : {"empty", "nul", "binary", "vanished"})
        LoadAndTouch(name);
}

TEST_F(BadInput, an_unreadable_file_is_told) {
    std::filesystem::create_directory(folder.path() / "folder.ini");
    LoadAndTouch("folder");
    ASSERT_FALSE(window.boxes.shown.empty());
    EXPECT_THAT(window.boxes.shown[0], HasSubstr("folder.ini"));
}

TEST_F(BadInput, counts_beyond_reason) {
    folder.WritePart("many", "[REGISTERS]\nCOUNT=32767\n[PINS]\nCOUNT=abc\n[BITS]\nCOUNT=-3\n");
    LoadAndTouch("many");
    EXPECT_EQ(part.Registers.Count(), 32767);
    EXPECT_EQ(part.PrgmPins.Count(), 0);
    ASSERT_EQ(window.boxes.shown.size(), 1U);
    EXPECT_THAT(window.boxes.shown[0], HasSubstr("abc"));
}

TEST_F(BadInput, odd_word_lengths) {
    for (const int length : {0, -5, 1, 53, 64, 4000}) {
        const std::string name = "len" + std::to_string(length);
        std::string text = kSmallPart;
        text.replace(text.find("LENGTH=24"), 9, "LENGTH=" + std::to_string(length));
        folder.WritePart(name, text);
        LoadAndTouch(name);
        EXPECT_EQ(part.RegisterLength(), length < 1 ? 24 : length);
    }
}

TEST_F(BadInput, odd_fields) {
    const std::vector<std::vector<std::pair<std::string, std::string>>> fields{
        {{"TYPE", "Counter"}, {"LEN", "0"}},
        {{"TYPE", "Counter"}, {"LEN", "-1"}},
        {{"TYPE", "Counter"}, {"LEN", "200"}},
        {{"TYPE", "Counter"}, {"POS", "400"}},
        {{"TYPE", "Counter"}, {"LINKEDBITS", "F4"}},
        {{"TYPE", "Bit"}, {"MIRRORBITS", "F6"}},
        {{"TYPE", "Bit"}, {"MIRRORBITS", "F5"}},
        {{"TYPE", "Counter"}, {"REG", "nowhere"}},
        {{"TYPE", "Counter"}, {"STEPVALUE", "0"}},
        {{"TYPE", "Counter"}, {"GREATERBITS", "nowhere"}},
        {{"TYPE", "Counter"}, {"STEPVALUEBITNAME", "F10"}},
        {{"TYPE", "List"}, {"COUNT", "2"}, {"FORMAT", "Number"}},
    };
    std::string text = "[REGISTERS]\nCOUNT=1\nNAME00=R\n[BITS]\nCOUNT=12\n";
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const std::string number = KeyNumber(static_cast<int>(i));
        for (const auto& [key, value] : fields[i])
            text += key + number + "=" + value + "\n";
        text += "NAME" + number + "=F" + std::to_string(i) + "\nREG" + number + "=R\nDISPLAY" +
                number + "=True\n";
    }
    folder.WritePart("odd", text);
    LoadAndTouch("odd");
    EXPECT_EQ(part.PrgmBits.Count(), 12);
}

TEST_F(BadInput, values_that_are_no_numbers_take_their_defaults_and_are_told_once) {
    std::string text = "REGISTER_LENGTH=long\nCLOCK=99\n[PINS]\nCOUNT=2\nLOCATION00=40\n"
                       "LOCATION01=1500\nENABLED01=True\n[REGISTERS]\nCOUNT=2\nNAME00=\nNAME01=\n";
    folder.WritePart("wrong", text);
    LoadAndTouch("wrong");
    EXPECT_EQ(part.RegisterLength(), 24);
    EXPECT_EQ(part.ClockPosition(), 1);
    EXPECT_EQ(part.PrgmPins(1).Position(), 4);
    ASSERT_EQ(window.boxes.shown.size(), 1U);
    for (const char* key : {"REGISTER_LENGTH", "CLOCK", "LOCATION00", "ENABLED01", "NAME00"})
        EXPECT_THAT(window.boxes.shown[0], HasSubstr(key));
    const std::string path = (folder.path() / "wrong.ini").string();
    std::istringstream lines(window.boxes.shown[0]);
    for (std::string line; std::getline(lines, line);)
        EXPECT_THAT(line, HasSubstr(path));
}

TEST_F(BadInput, names_at_the_limits) {
    const std::string thirtyOne(31, 'x');
    folder.WritePart(std::string(30, 'x'), "[REGISTERS]\nCOUNT=1\nNAME00=FOUND\n");
    LoadAndTouch(thirtyOne);
    EXPECT_EQ(part.Registers.Count(), 1);
    EXPECT_EQ(frm.Caption, thirtyOne);
    folder.WritePart(std::string(29, 'y'), "[REGISTERS]\nCOUNT=1\nNAME00=FOUND\n");
    LoadAndTouch(std::string(29, 'y') + "/");
    EXPECT_EQ(part.Registers.Count(), 1);
    LoadAndTouch("short/");
    EXPECT_EQ(part.Registers.Count(), 0);
}

TEST(BadDisk, a_folder_that_cant_be_written_is_told_once_for_each_save) {
    const Folder folder;
    folder.Write("zentrel.ini", "[RECENTPARTS]\nCOUNT=2\n");
    folder.Write("old.ini", "[SETUP]\nCLOCK=8\n");
    Window window(folder, std::make_unique<window::ReadOnlyStore>());
    window.Start();
    window.Load("old");
    EXPECT_EQ(window.part.ClockPosition(), 3) << "brought to the current format all the same";
    ASSERT_EQ(window.boxes.shown.size(), 1U);
    EXPECT_THAT(window.boxes.shown[0], HasSubstr("old.ini"));
    EXPECT_THAT(window.boxes.shown[0], HasSubstr("Read-only file system"));
    window.Load("old");
    ASSERT_EQ(window.boxes.shown.size(), 3U);
    EXPECT_THAT(window.boxes.shown[1], HasSubstr("zentrel.ini"));
    window.frm.Unload();
    EXPECT_FALSE(window.frm.Visible) << "it doesn't keep the program from ending";
}

} // namespace
} // namespace zentrel
