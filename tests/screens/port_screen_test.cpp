#include "screens/port_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "screens/timers.h"
#include "tests/screens/desk.h"

namespace zentrel {
namespace {

using desk::Desk;
using testing::HasSubstr;

class PortSetup : public testing::Test {
  protected:
    void Load(std::string_view route, std::int32_t clock, std::int32_t data, std::int32_t le) {
        desk.session.CommMode_Select = route;
        desk.part.SetClockPosition(clock);
        desk.part.SetDataPosition(data);
        desk.part.SetLEPosition(le);
        Upward upward = desk.part.upward();
        upward.port = &screen;
        desk.part.Connect(upward);
        desk.part.PortAddress = 888;
        for (const cPrgmPin& pin : desk.part.PrgmPins)
            screen.AddPinRow(pin);
        screen.UpdatePortDisplay();
    }
    template<typename Options>
    int Chosen(const Options& options) {
        for (std::size_t i = 0; i < options.size(); ++i)
            if (options[i].Value) return static_cast<int>(i);
        return -1;
    }
    int ChosenPin(int row) {
        for (std::size_t o = 0; o < 12; ++o)
            if (screen.optPrgmBit[static_cast<std::size_t>(row) * 12 + o].Value)
                return static_cast<int>(o);
        return -1;
    }

    Desk desk;
    Timers timers;
    PortScreen screen{desk.part, timers};
};

TEST_F(PortSetup, the_screen_shows_route_address_and_pins_of_the_device) {
    desk.AddPin("CE", 10);
    Load("LPT", 1, 2, 3);
    EXPECT_EQ(Chosen(screen.CommMode), 1);
    EXPECT_EQ(Chosen(screen.optPortAdr), 0);
    EXPECT_EQ(screen.txtPortAdr.Text, "378");
    EXPECT_FALSE(screen.txtPortAdr.Enabled);
    EXPECT_EQ(Chosen(screen.optClockBit), 0);
    EXPECT_EQ(Chosen(screen.optLEBit), 2);
    EXPECT_EQ(screen.fraExternalPin[0].Caption, "CE");
    EXPECT_EQ(ChosenPin(0), 8);
    EXPECT_FALSE(screen.optClockBit[8].Enabled);
    EXPECT_TRUE(screen.optPrgmBit[8].Enabled);
}

TEST_F(PortSetup, nothing_is_shown_without_a_device_and_missing_lines_get_their_defaults) {
    desk.part.SetLineMasks(0, 0, 0);
    desk.part.ID.clear();
    screen.UpdatePortDisplay();
    EXPECT_EQ(desk.part.ClockPositionValue(), 0);
    desk.part.ID = "QVX9001";
    screen.UpdatePortDisplay();
    EXPECT_EQ(desk.part.ClockPositionValue(), 1);
    EXPECT_EQ(desk.part.DataPositionValue(), 2);
    EXPECT_EQ(desk.part.LEPositionValue(), 4);
}

struct AddressCase {
    int choice;
    std::int16_t address;
    const char* text;
};

TEST_F(PortSetup, each_address_choice_sets_its_address) {
    Load("LPT", 1, 2, 3);
    for (const AddressCase& c :
         {AddressCase{1, 632, "278"}, {2, 956, "3BC"}, {3, 700, "2BC"}, {0, 888, "378"}}) {
        screen.SelectPortAdr(c.choice);
        EXPECT_EQ(desk.part.PortAddress, c.address);
        EXPECT_EQ(screen.txtPortAdr.Text, c.text);
        EXPECT_EQ(screen.txtPortAdr.Enabled, c.choice == 3);
    }
}

TEST_F(PortSetup, a_refresh_never_replaces_a_stored_address) {
    Load("LPT", 1, 2, 3);
    desk.part.PortAddress = 0x5378;
    screen.UpdatePortDisplay();
    EXPECT_EQ(desk.part.PortAddress, 0x5378);
    EXPECT_EQ(Chosen(screen.optPortAdr), 3);
    EXPECT_TRUE(screen.txtPortAdr.Enabled);
    EXPECT_EQ(screen.txtPortAdr.Text, "5378");
}

TEST_F(PortSetup, enter_takes_a_hexadecimal_address) {
    Load("LPT", 1, 2, 3);
    screen.txtPortAdr.Text = " d010 ";
    screen.EnterPortAdr();
    EXPECT_EQ(static_cast<std::uint16_t>(desk.part.PortAddress), 0xD010);
    EXPECT_EQ(screen.txtPortAdr.Text, "D010");
    for (const char* bad : {"", "xyz", "12345", "37 8", "-1"}) {
        screen.txtPortAdr.Text = bad;
        screen.EnterPortAdr();
        EXPECT_EQ(screen.txtPortAdr.Text, "D010") << bad;
    }
    screen.txtPortAdr.Text = "0x378";
    screen.EnterPortAdr();
    EXPECT_EQ(Chosen(screen.optPortAdr), 0);
}

TEST_F(PortSetup, usb_disables_what_only_the_parallel_port_needs_and_hides_its_connector) {
    Load("USB", 1, 2, 3);
    EXPECT_FALSE(screen.optPortAdr[0].Enabled);
    EXPECT_FALSE(screen.txtAutoReload.Enabled);
    EXPECT_FALSE(screen.DB1[2].Visible);
    EXPECT_FALSE(screen.DBConn.Visible);
    screen.SelectCommMode(1);
    EXPECT_EQ(desk.session.CommMode_Select, "LPT");
    EXPECT_TRUE(screen.optPortAdr[0].Enabled);
    EXPECT_TRUE(screen.DB1[2].Visible);
}

TEST_F(PortSetup, every_function_has_its_colour_on_header_and_connector) {
    desk.AddPin("CE", 7);
    Load("LPT", 1, 2, 3);
    EXPECT_EQ(screen.Pinheader[1].BackColor, colors::kCyan);
    EXPECT_EQ(screen.DB1[2].BackColor, colors::kCyan);
    EXPECT_EQ(screen.Pinheader[2].BackColor, colors::kGreen);
    EXPECT_EQ(screen.DB1[5].BackColor, colors::kMagenta) << "header pin 3 draws to DB-25 pin 5";
    EXPECT_EQ(screen.DB1[4].BackColor, colors::kUnassigned);
    EXPECT_EQ(screen.DB1[8].BackColor, colors::kBlue);
    EXPECT_EQ(screen.DB1[18].BackColor, colors::kBlack);
    EXPECT_EQ(screen.wires[7].BorderColor, colors::kBlue);
    EXPECT_FALSE(screen.Label11.Visible);
}

TEST_F(PortSetup, two_signals_on_one_pin_are_red_but_not_refused) {
    Load("LPT", 3, 3, 4);
    EXPECT_EQ(screen.DB1[5].BackColor, colors::kRed);
    EXPECT_EQ(screen.Pinheader[3].BackColor, colors::kRed);
    screen.SelectDataBit(1);
    EXPECT_EQ(screen.Pinheader[3].BackColor, colors::kCyan);
    EXPECT_EQ(desk.part.DataPosition(), 2);
}

TEST_F(PortSetup, a_read_back_pin_has_five_inputs_under_lpt_and_twelve_pins_under_usb) {
    desk.part.InputPinPositionINI = 1503;
    desk.AddPin("LOCK", 1503, true);
    Load("LPT", 1, 2, 4);
    EXPECT_EQ(screen.optPrgmBit[0].Caption, "S3");
    EXPECT_EQ(screen.optPrgmBit[4].Caption, "S7*");
    EXPECT_FALSE(screen.optPrgmBit[5].Visible);
    EXPECT_EQ(screen.DB1[15].BackColor, colors::kYellow);
    EXPECT_TRUE(screen.Label11.Visible);

    screen.SelectPrgmBit(2);
    EXPECT_EQ(desk.part.InputPinPositionINI, 1203);
    EXPECT_EQ(desk.part.InputPinPosition(), 1200);

    screen.SelectCommMode(0);
    EXPECT_EQ(desk.part.InputPinPosition(), 3);
    EXPECT_EQ(screen.optPrgmBit[0].Caption, "1");
    EXPECT_TRUE(screen.optPrgmBit[11].Visible);
    EXPECT_EQ(ChosenPin(0), 2);
    EXPECT_EQ(screen.Pinheader[3].BackColor, colors::kYellow);
    screen.SelectPrgmBit(4);
    EXPECT_EQ(desk.part.InputPinPositionINI, 1205);
}

TEST_F(PortSetup, moving_a_pin_refreshes_the_bits_and_the_drawing) {
    desk.AddPin("CE", 7);
    Load("LPT", 1, 2, 3);
    desk.recorder.refreshed.clear();
    screen.SelectPrgmBit(10);
    EXPECT_EQ(desk.part.PrgmPins("CE").Position(), 12);
    EXPECT_THAT(desk.recorder.refreshed, testing::ElementsAre("Bit"));
    EXPECT_EQ(screen.Pinheader[12].BackColor, colors::kBlue);
    desk.part.Updating = true;
    screen.SelectPrgmBit(0);
    EXPECT_EQ(desk.part.PrgmPins("CE").Position(), 12);
}

TEST_F(PortSetup, two_burst_commands_earn_a_warning_and_the_change_stands) {
    desk.AddPin("CE", 7);
    Load("LPT", 1, 2, 3);
    desk.part.BurstCmds.Add({});
    screen.SelectClockBit(4);
    EXPECT_TRUE(desk.recorder.shown.empty()) << "one command is no list yet";
    desk.part.BurstCmds.Add({});
    screen.SelectDataBit(5);
    EXPECT_TRUE(desk.recorder.shown.empty()) << "data and latch enable pass without it";
    screen.SelectClockBit(0);
    screen.SelectPortAdr(1);
    screen.SelectPrgmBit(3);
    ASSERT_EQ(desk.recorder.shown.size(), 3U);
    EXPECT_THAT(desk.recorder.shown[0], HasSubstr("will not be reflected in the Burst Commands"));
    EXPECT_EQ(desk.recorder.titles[0], "WARNING");
    EXPECT_EQ(desk.part.ClockPosition(), 1);
    EXPECT_EQ(desk.part.PrgmPins("CE").Position(), 4);
}

TEST_F(PortSetup, the_period_of_the_reload_is_taken_on_enter) {
    struct Case {
        const char* typed;
        const char* text;
        int interval;
    };
    for (const Case& c :
         {Case{"0", "1", 1000}, {"abc", "65", 65000}, {"70", "65", 65000}, {"30", "30", 30000}}) {
        screen.txtAutoReload.Text = c.typed;
        screen.EnterAutoReload();
        EXPECT_EQ(screen.txtAutoReload.Text, c.text);
        EXPECT_EQ(timers.tmrAutoReload.Interval, c.interval);
    }
}

} // namespace
} // namespace zentrel
