#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "partfile/memory_store.h"
#include "screens/file_dialogs.h"
#include "screens/wire_screen.h"
#include "tests/transport/rig.h"
#include "transport/readback.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

struct NamedFile : FileDialogs {
    std::optional<std::string> ExportName(std::string_view title, std::string_view) override {
        asked.emplace_back(title);
        return name;
    }
    std::vector<std::string> asked;
    std::optional<std::string> name;
};

struct Monitor : Rig {
    explicit Monitor(std::string_view route = kRouteLpt) : Rig(route) {
        AddRegister("R10", 0x00000A);
        AddField("N", "R0", 4);
        AddField("N_LOW", "R1", 4);
        screen.Show();
    }
    void AddField(const std::string& name, const std::string& reg, std::int16_t position) {
        part.PrgmBits.Add(
            std::make_shared<cPrgmBits>(part, name, reg, position, std::int16_t{8}, true), name);
    }
    void Load(std::initializer_list<const char*> names) {
        for (const char* name : names)
            LoadRegister(part, name);
        screen.Refresh();
    }
    void Filter(const std::string& text) {
        screen.txtFilter.Text = text;
        screen.FilterTyped();
    }
    std::vector<std::string> Registers() const {
        std::vector<std::string> names;
        for (int row = 0; row < screen.RowCount(); ++row)
            names.push_back(screen.Text(row, WireScreen::kRegister));
        return names;
    }

    NamedFile dialogs;
    MemoryStore::Files files;
    WireScreen screen{part, dialogs, std::make_unique<MemoryStore>(files)};
};

TEST(WireScreen, lists_words_oldest_first_while_it_is_open) {
    Monitor m;
    m.Load({"R0", "R1"});
    EXPECT_THAT(m.Registers(), ElementsAre("R0", "R1"));
    EXPECT_EQ(m.screen.Text(1, WireScreen::kHex), "AB CDE1");
    EXPECT_EQ(m.screen.Text(1, WireScreen::kBits), "101010111100110111100001");
    EXPECT_EQ(m.screen.Text(1, WireScreen::kFields), "N_LOW=222");
    EXPECT_EQ(m.screen.lblCount.Caption, "2 records");
    m.screen.Close();
    m.Load({"R2"});
    m.screen.Show();
    m.Load({"R0"});
    EXPECT_THAT(m.Registers(), ElementsAre("R0", "R1", "R0")) << "closed, it hears nothing";
}

TEST(WireScreen, the_filter_takes_registers_fields_pins_words_and_failures) {
    Monitor m;
    m.Load({"R0", "R1", "R10"});
    m.part.PrgmPins("CE").SetEnabled(true);
    UpdateOutputPins(m.part);
    m.session.CommMode_Select = kRouteUsb;
    usbSetupDevice(m.part);
    m.bench.bridge.faults.refused = {usb::kSendWord};
    m.Load({"R2"});
    const struct {
        const char* text;
        std::vector<std::string> rows;
    } cases[] = {
        {"R1", {"R1"}}, // and not R10
        {"r", {"R0", "R1", "R10", "Bridge opened", "Pin configuration", "Word format", "R2"}},
        {"N", {"R0"}}, // and not Pins
        {"n_", {"R1"}},
        {"ce", {"R0", "Pins"}}, // at first every pin is news
        {"0xabc", {"R1"}},
        {"refused", {"R2"}},
        {"usb r2", {"R2"}},
        {"lpt r2", {}},
        {"config", {"Pin configuration"}},
        {"  ",
         {"R0", "R1", "R10", "Pins", "Bridge opened", "Pin configuration", "Word format", "R2"}},
    };
    for (const auto& c : cases) {
        m.Filter(c.text);
        std::vector<std::string> rows = m.Registers();
        std::erase_if(rows, [](const std::string& row) { return row.starts_with("Trigger"); });
        EXPECT_EQ(rows, c.rows) << '"' << c.text << '"';
    }
}

TEST(WireScreen, a_filter_holds_for_what_comes_and_says_how_much_it_leaves_out) {
    Monitor m;
    m.Filter("R1");
    m.Load({"R0", "R1", "R0", "R1"});
    EXPECT_THAT(m.Registers(), ElementsAre("R1", "R1"));
    EXPECT_EQ(m.screen.lblCount.Caption, "2 of 4 records");
}

TEST(WireScreen, pause_keeps_the_list_and_go_on_continues_it) {
    Monitor m;
    m.Load({"R0"});
    m.screen.ClickPause();
    EXPECT_EQ(m.screen.cmdPause.Caption, "&Go on");
    EXPECT_EQ(m.screen.lblCount.Caption, "1 record, paused");
    m.Load({"R1"});
    EXPECT_THAT(m.Registers(), ElementsAre("R0"));
    m.screen.ClickPause();
    m.Load({"R2"});
    EXPECT_THAT(m.Registers(), ElementsAre("R0", "R2"));
}

TEST(WireScreen, clear_forgets_everything_and_goes_on) {
    Monitor m;
    m.Load({"R0", "R1"});
    m.screen.Select(0);
    m.screen.ClickClear();
    EXPECT_THAT(m.Registers(), IsEmpty());
    EXPECT_EQ(m.screen.Shown(), nullptr);
    EXPECT_FALSE(m.screen.cmdClear.Enabled);
    EXPECT_FALSE(m.screen.cmdSaveVcd.Enabled);
    m.Load({"R2"});
    EXPECT_THAT(m.Registers(), ElementsAre("R2"));
}

TEST(WireScreen, the_newest_word_is_shown_until_a_row_is_selected) {
    Monitor m(kRouteUsb);
    m.Load({"R0", "R1"});
    usbCmd_GetVersion(m.part);
    m.screen.Refresh();
    EXPECT_THAT(m.screen.ShownTitle(), StartsWith("R1  0xAB CDE1  USB  "));
    m.screen.Select(0);
    m.Load({"R2"});
    EXPECT_THAT(m.screen.ShownTitle(), StartsWith("R0 "));
    EXPECT_EQ(m.screen.SelectedRow(), 0);
    m.Filter("R2");
    EXPECT_EQ(m.screen.SelectedRow(), -1) << "it isn't among the rows";
    m.Filter("");
    EXPECT_EQ(m.screen.SelectedRow(), 0);
    m.screen.Select(-1);
    EXPECT_THAT(m.screen.ShownTitle(), StartsWith("R2 "));
}

TEST(WireScreen, the_details_tell_fields_read_back_and_packets) {
    Monitor m(kRouteUsb);
    m.Load({"R1"});
    QVX4100ReadRegister(m.part, "R1");
    m.screen.Refresh();
    std::vector<std::string> lines;
    for (const WireScreen::Detail& detail : m.screen.Details())
        lines.push_back(detail.name + ": " + detail.value);
    EXPECT_THAT(lines, ElementsAre("RB_ADDR: 1", "Read back: 0xA BCDE", "Remark: acknowledged",
                                   "Send word and read: \u2192 05 11 00 01 02",
                                   "Acknowledged: Send word and read: \u2190 06 F0 11 DE BC 0A"));
}

TEST(WireScreen, saves_what_the_list_shows_whole_or_not_at_all) {
    Monitor m;
    m.Load({"R0", "R1"});
    m.Filter("R1");
    m.screen.ClickSaveCsv();
    EXPECT_THAT(m.files.bytes, IsEmpty()) << "the dialog was cancelled";
    m.dialogs.name = "/tmp/words.csv";
    m.screen.ClickSaveCsv();
    EXPECT_THAT(m.files.bytes["/tmp/words.csv"], HasSubstr(",R1,0xABCDE1,"));
    EXPECT_THAT(m.files.bytes["/tmp/words.csv"], ::testing::Not(HasSubstr(",R0,")));
    EXPECT_EQ(m.status.line, "Saved /tmp/words.csv");
    m.dialogs.name = "/tmp/words.vcd";
    m.screen.ClickSaveVcd();
    EXPECT_THAT(m.files.bytes["/tmp/words.vcd"], HasSubstr("$enddefinitions $end"));
    m.files.failure = "No space left on device";
    m.screen.ClickSaveVcd();
    EXPECT_THAT(m.messages.shown, ElementsAre("/tmp/words.vcd\r\nNo space left on device"));
}

TEST(WireScreen, the_oldest_rows_leave_when_the_list_is_full) {
    Monitor m;
    const auto limit = static_cast<int>(WireHistory::kLimit);
    for (int i = 0; i < limit; ++i)
        LoadValue(m.part, i << 4);
    m.screen.Refresh();
    EXPECT_EQ(m.screen.RowCount(), limit);
    m.screen.Select(1);
    m.Load({"R1", "R1"});
    EXPECT_EQ(m.screen.RowCount(), limit);
    EXPECT_EQ(m.screen.dropped(), 2U);
    EXPECT_EQ(m.screen.SelectedRow(), -1) << "it gave way";
    EXPECT_EQ(m.screen.Row(0)->word, BitWord(2 << 4));
    EXPECT_EQ(m.screen.lblCount.Caption, "100000 records, the oldest give way");
}

} // namespace
} // namespace zentrel
