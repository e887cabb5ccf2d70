#include "screens/bits_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/screens/desk.h"

namespace zentrel {
namespace {

using desk::Desk;
using testing::ElementsAre;

class BitsAndPins : public testing::Test {
  protected:
    void SetUp() override {
        desk.AddRegister("R0", 0, 0);
        desk.recorder.onBits = [this] { screen.UpdateBitDisplay(); };
    }
    void AddAll() {
        screen.AddBit(desk.AddField("ENABLE", "R0", 23, 1), "Switches");
        cPrgmBits& counter = desk.AddField("N", "R0", 4, 8);
        counter.Units = " kHz";
        screen.AddCounter(counter, "Counters");
        cPrgmBits& list = desk.AddField("GAIN", "R0", 12, 3);
        list.SetStringArray({"Low", "Middle", "High"});
        screen.AddList(list, "Counters");
        screen.AddPin(desk.AddPin("CE", 10));
        screen.UpdateBitDisplay();
    }
    bool Sent() { return !desk.part.Registers(1).changed(); }

    Desk desk;
    BitsScreen screen{desk.part};
};

TEST_F(BitsAndPins, each_field_shows_its_value_in_its_own_way) {
    AddAll();
    desk.part.PrgmBits("ENABLE").SetValue(1);
    desk.part.PrgmBits("N").SetValue(42);
    desk.part.PrgmBits("GAIN").SetBitValue(2);
    desk.part.PrgmPins("CE").SetEnabled(true);
    screen.UpdateBitDisplay();
    EXPECT_TRUE(screen.chkPrgmBit[0].Value);
    EXPECT_EQ(screen.txtCntrVal[0].Text, "42 kHz");
    EXPECT_EQ(screen.cmbBits[0].ListIndex, 2);
    EXPECT_TRUE(screen.chkPrgmPin[0].Value);
    EXPECT_FALSE(desk.part.Updating);
    EXPECT_EQ(screen.fraPrgmBits[0].Caption, "Switches");
    EXPECT_EQ(screen.FrameCount(), 2);
}

TEST_F(BitsAndPins, ticking_a_box_writes_the_bit_and_sends_it) {
    AddAll();
    desk.recorder.refreshed.clear();
    screen.chkPrgmBit[0].SetValue(true);
    EXPECT_EQ(desk.part.Registers(1).Value(), 0x800000);
    EXPECT_THAT(desk.recorder.refreshed, ElementsAre("Register", "Bit", "PLL", "CLKDIST"));
    EXPECT_TRUE(Sent());
    EXPECT_EQ(desk.recorder.status, "");

    desk.recorder.autoReload = false;
    screen.chkPrgmBit[0].SetValue(false);
    EXPECT_EQ(desk.part.Registers(1).Value(), 0);
    EXPECT_FALSE(Sent());
}

TEST_F(BitsAndPins, choosing_a_list_entry_and_stepping_a_counter_write_the_field) {
    AddAll();
    desk.recorder.refreshed.clear();
    screen.cmbBits[0].SetListIndex(1);
    EXPECT_EQ(desk.part.PrgmBits("GAIN").BitValue(), 1);
    EXPECT_THAT(desk.recorder.refreshed, ElementsAre("Bit", "Register", "PLL", "CLKDIST"));
    desk.recorder.refreshed.clear();
    screen.SpinUp(0);
    screen.SpinUp(0);
    screen.SpinDown(0);
    EXPECT_EQ(desk.part.PrgmBits("N").Value(), 1);
    EXPECT_EQ(screen.txtCntrVal[0].Text, "1 kHz");
    EXPECT_EQ(desk.recorder.refreshed.size(), 15U) << "the bits come a second time";
}

TEST_F(BitsAndPins, enter_takes_a_typed_number_with_or_without_its_units) {
    AddAll();
    for (const char* typed : {"17", " 17 kHz"}) {
        screen.txtCntrVal[0].Text = typed;
        screen.EnterCounter(0);
        EXPECT_EQ(desk.part.PrgmBits("N").Value(), 17) << typed;
    }
    screen.txtCntrVal[0].Text = "1000";
    screen.EnterCounter(0);
    EXPECT_EQ(screen.txtCntrVal[0].Text, "255 kHz") << "clipped to what the field can hold";
    screen.txtCntrVal[0].Text = "seven";
    EXPECT_THROW(screen.EnterCounter(0), TypeMismatch);
    EXPECT_EQ(screen.txtCntrVal[0].Text, "255 kHz");
    EXPECT_EQ(desk.part.PrgmBits("N").Value(), 255);
}

TEST_F(BitsAndPins, a_change_that_fails_puts_the_element_back) {
    AddAll();
    desk.part.PrgmBits("ENABLE").MirrorBits = "nowhere";
    EXPECT_THROW(screen.chkPrgmBit[0].SetValue(true), NotFound);
    EXPECT_FALSE(screen.chkPrgmBit[0].Value);
    EXPECT_FALSE(desk.part.Updating);
}

TEST_F(BitsAndPins, a_pin_toggles_in_the_model) {
    AddAll();
    desk.recorder.refreshed.clear();
    screen.chkPrgmPin[0].SetValue(true);
    EXPECT_TRUE(desk.part.PrgmPins("CE").Enabled());
    EXPECT_THAT(desk.recorder.refreshed, ElementsAre("Bit"));
}

TEST_F(BitsAndPins, nothing_happens_while_the_program_writes) {
    AddAll();
    desk.part.Updating = true;
    screen.chkPrgmBit[0].SetValue(true);
    screen.cmbBits[0].SetListIndex(1);
    screen.chkPrgmPin[0].SetValue(true);
    EXPECT_EQ(desk.part.Registers(1).Value(), 0);
    EXPECT_EQ(desk.recorder.status, "before");
}

TEST_F(BitsAndPins, a_list_value_beyond_its_texts_is_told_and_the_others_update) {
    AddAll();
    cPrgmBits& other = desk.AddField("BIAS", "R0", 15, 2);
    other.SetStringArray({"Off", "On"});
    screen.AddList(other, "Counters");
    desk.part.PrgmBits("GAIN").SetBitValue(5);
    other.SetBitValue(1);
    screen.UpdateBitDisplay();
    EXPECT_THAT(desk.recorder.shown, ElementsAre("GAIN Unable to set ListIndex"));
    EXPECT_EQ(screen.cmbBits[1].ListIndex, 1);
}

TEST_F(BitsAndPins, a_list_of_numbers_shows_them) {
    cPrgmBits& current = desk.AddField("CURRENT", "R0", 12, 3);
    current.SetValueArray({0.625, 1.25, 5});
    screen.AddList(current, "");
    EXPECT_THAT(screen.cmbBits[0].List, ElementsAre("0.625", "1.25", "5"));
    screen.cmbBits[0].SetListIndex(2);
    EXPECT_EQ(current.Value(), 5);
}

TEST_F(BitsAndPins, a_field_without_its_register_doesnt_stop_the_others) {
    screen.AddBit(desk.AddField("LOST", "nowhere", 0, 1), "");
    AddAll();
    desk.part.PrgmBits("N").SetValue(9);
    screen.UpdateBitDisplay();
    EXPECT_EQ(screen.txtCntrVal[0].Text, "9 kHz");
}

TEST_F(BitsAndPins, a_right_click_tells_the_description) {
    AddAll();
    desk.part.PrgmBits("ENABLE").Description = "Switches it on";
    screen.HelpOnBit(0);
    screen.HelpOnList(0);
    EXPECT_THAT(desk.recorder.shown, ElementsAre("Switches it on", "No Description Available"));
    EXPECT_THAT(desk.recorder.titles, ElementsAre("Help", "Help"));
}

TEST_F(BitsAndPins, a_read_back_pin_is_no_switch) {
    screen.AddPin(desk.AddPin("LOCK", 1503, true));
    EXPECT_EQ(screen.PinCount(), 0);
    EXPECT_FALSE(screen.fraPrgmPins.Visible);
}

TEST_F(BitsAndPins, too_wide_a_tab_scrolls_there_and_back) {
    BitsSizes sizes;
    sizes.tabWidth = 3000;
    screen.SetSizes(sizes);
    AddAll();
    EXPECT_TRUE(screen.hscPrgmBits.Visible);
    EXPECT_TRUE(desk.session.bBitsAndPinsTabTooWide);
    EXPECT_EQ(desk.session.hscPrgmBits_Max, screen.hscPrgmBits.Max);
    EXPECT_EQ(screen.hscPrgmBits.LargeChange, 3000);
    const int left = screen.fraPrgmBits[0].Left;
    screen.Scroll(700);
    EXPECT_EQ(screen.fraPrgmBits[0].Left, left - 700);
    screen.Scroll(0);
    EXPECT_EQ(screen.fraPrgmBits[0].Left, left);

    sizes.tabWidth = 20000;
    screen.SetSizes(sizes);
    EXPECT_FALSE(screen.hscPrgmBits.Visible);
    EXPECT_EQ(screen.fraPrgmBits[1].Caption, "Counters");
}

TEST_F(BitsAndPins, clearing_brings_the_templates_back) {
    AddAll();
    screen.Clear();
    EXPECT_EQ(screen.chkPrgmBit.size(), 1U);
    EXPECT_EQ(screen.chkPrgmBit[0].Caption, "PrgmBit");
    EXPECT_EQ(screen.lblCntr[0].Caption, "Counter");
    EXPECT_EQ(screen.txtCntrVal[0].Text, "0");
    EXPECT_EQ(screen.fraPrgmBits[0].Caption, "Program Bits");
    EXPECT_FALSE(screen.fraPrgmPins.Visible);
    screen.UpdateBitDisplay();
}

} // namespace
} // namespace zentrel
