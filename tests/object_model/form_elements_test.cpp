#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "clock/clk_dist.h"
#include "tests/object_model/form_rig.h"

namespace zentrel::objects {
namespace {

using ::testing::HasSubstr;

TEST(FormElements, repeated_elements_count_through_all_diagrams) {
    FormRig rig;
    const struct {
        const char* name;
        int index;
        const char* property;
        Value value;
    } rows[] = {
        {"txtOsc", 1, "Text", "10"},
        {"txtOsc", 1, "Tag", "Loop"},
        {"txtOsc", 0, "Tag", ""}, // the design's
        {"lblPLL", 9, "Caption", "N Counter"},
        {"lblPLL", kPllLabels + 9, "Caption", "N Counter"},
        {"txtCLK_VCOfreq", 1, "Text", "1200"},
        {"lblCLK", kClockLabels + 6, "Caption", "Loop"}, // the block's PLL
        {"lblCLK", 6, "Caption", "PLL"},
        {"lblCLKid", 8 + 1, "Caption", "CLKout1"},
        {"divCB_CMux", 8 + 1, "ListCount", 2},
        {"divCB_CMux", 8 + 1, "Index", 9},
        {"divCB_CMux", 8 + 2, "ListCount", 0}, // beyond the block's channels
        {"divCB_CMux", 8 + 1, "Name", "divCB_CMux"},
        {"optPrgmBit", 8, "Value", true}, // the pin stands on 10
        {"lblRegName", 1, "Caption", "R1"},
        {"Pinheader", 1, "BackColor", static_cast<std::int32_t>(colors::kCyan)},
        {"linec", 1, "BorderColor", static_cast<std::int32_t>(colors::kCyan)},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Read(rig.Element(row.name, row.index), row.property), row.value)
            << row.name << "(" << row.index << ")." << row.property;
    }
}

TEST(FormElements, a_number_that_no_element_has_is_an_error) {
    FormRig rig;
    const std::pair<const char*, int> absent[] = {
        {"txtOsc", 2},    {"txtOsc", -1},       {"linpll", 2 * kPllLines},
        {"lblCLKid", 16}, {"Pinheader", 0},     {"Pinheader", 15},
        {"linea", 10},    {"linef", 9},         {"CommMode", 2},
        {"mnuMode", 9},   {"cmbBits", 1},       {"DB1", 26},
        {"lblCLK", -1},   {"cbClkInputMux", 2}, {"fraPrgmPins", 1},
        {"txtRegBits", 2}};
    for (const auto& [name, index] : absent)
        EXPECT_THROW(rig.Element(name, index), NotFound) << name << index;
    EXPECT_THROW(Read(rig.form, "txtPortAdr", {Value(0)}), WrongArguments);
    EXPECT_THROW(Read(rig.form, "txtPortAddress"), NoSuchMember);
    EXPECT_THROW(Read(rig.Element("txtPortAdr"), "Caption"), NoSuchMember);
    EXPECT_THROW(Read(rig.Element("txtPortAdr"), "Index"), Error) << "it is no array";
}

TEST(FormElements, one_kept_over_a_device_change_fails_instead_of_reaching_into_nothing) {
    FormRig rig;
    const ObjectRef box = rig.Element("txtOsc", 1);
    const ObjectRef row = rig.Element("lblRegName", 1);
    const ObjectRef mux = rig.Element("divCB_CMux", 8);
    rig.window.Load("Plain");
    EXPECT_THROW(Read(box, "Text"), NotFound);
    EXPECT_THROW(Write(box, "Text", "1"), NotFound);
    EXPECT_THROW(Read(row, "Caption"), NotFound);
    EXPECT_THROW(Read(mux, "ListIndex"), NotFound);
    rig.window.Load("Conditioner");
    EXPECT_EQ(Read(box, "Text"), Value("10"));
}

TEST(FormElements, an_array_without_a_number_is_walked) {
    FormRig rig;
    const ObjectRef rows = rig.Element("lblRegName");
    EXPECT_EQ(Read(rows, "Count"), Value(2));
    EXPECT_EQ(Read(rows, "UBound"), Value(1));
    EXPECT_EQ(Read(rig.Object(Read(rows, "Item", {Value(1)})), "Caption"), Value("R1"));
    const ObjectRef pins = rig.Element("Pinheader");
    EXPECT_EQ(Read(pins, "LBound"), Value(1));
    EXPECT_EQ(Read(pins, "Count"), Value(14));
    const Walk& walk = *pins.table().traits().walk;
    EXPECT_EQ(Read(rig.Object(walk.item(pins, 14)), "Index"), Value(14));
    // An array of one stands for its element too.
    EXPECT_EQ(Read(rig.Element("fraPrgmPins"), "Caption"), Value("Program Pins"));
    EXPECT_EQ(Read(rig.Element("fraPrgmPins", 0), "Caption"), Value("Program Pins"));
}

TEST(FormElements, choosing_a_list_entry_acts_as_a_click_does) {
    FormRig rig;
    const ObjectRef gain = rig.Element("cmbBits", 0);
    Write(gain, "ListIndex", 2);
    EXPECT_EQ(rig.part.PrgmBits("GAIN").BitValue(), 2);
    EXPECT_EQ(Read(gain, "Text"), Value("High"));
    EXPECT_EQ(Read(gain, "List", {Value(1)}), Value("Middle"));
    EXPECT_THROW(Write(gain, "ListIndex", 3), OutOfRange);
    EXPECT_THROW(Read(gain, "List", {Value(3)}), OutOfRange);
    EXPECT_EQ(rig.part.PrgmBits("GAIN").BitValue(), 2);

    Write(rig.Element("cbClkInputMux", 1), "ListIndex", 3);
    EXPECT_EQ(rig.part.PrgmBits("MODE").BitValue(), 3);
    Write(rig.Element("divCB_CMux", 8 + 1), "ListIndex", 1);
    EXPECT_EQ(rig.part.PrgmBits("MUX1").BitValue(), 1);
    EXPECT_EQ(rig.part.PrgmBits("MUX0").BitValue(), 0);

    rig.part.Updating = true;
    Write(gain, "ListIndex", 0);
    EXPECT_EQ(rig.part.PrgmBits("GAIN").BitValue(), 2) << "the program itself is writing";
}

TEST(FormElements, a_lists_entries_can_be_changed) {
    FormRig rig;
    const ObjectRef list = rig.Element("cmbLdBurst");
    Read(list, "Clear");
    Read(list, "AddItem", {Value("b")});
    Read(list, "AddItem", {Value("a"), Value(0)});
    Read(list, "AddItem", {Value("c")});
    Read(list, "RemoveItem", {Value(1)});
    EXPECT_EQ(Read(list, "ListCount"), Value(2));
    EXPECT_EQ(Read(list, "List", {Value(0)}), Value("a"));
    EXPECT_EQ(Read(list, "List", {Value(1)}), Value("c"));
    EXPECT_THROW(Read(list, "AddItem", {Value("z"), Value(3)}), OutOfRange);
    EXPECT_THROW(Read(list, "RemoveItem", {Value(2)}), OutOfRange);
    std::vector<Value> second{Value(1)};
    Write(list, list.table().At("List"), second, Value("d"));
    EXPECT_EQ(rig.frm.burst.panel.cmbLdBurst.List.back(), "d");
}

TEST(FormElements, an_option_acts_when_it_becomes_the_chosen_one) {
    FormRig rig;
    Write(rig.Element("optClockBit", 4), "Value", true);
    EXPECT_EQ(rig.part.ClockPosition(), 5);
    EXPECT_EQ(Read(rig.Element("optClockBit", 0), "Value"), Value(false));
    Write(rig.Element("optPrgmBit", 6), "Value", -1);
    EXPECT_EQ(rig.part.PrgmPins("CE").Position(), 7);
    Write(rig.Element("CommMode", 0), "Value", true);
    EXPECT_EQ(rig.frm.session.CommMode_Select, "USB");
    Write(rig.Element("optPortAdr", 1), "Value", true);
    EXPECT_EQ(rig.part.PortAddress, 632);
    // Taking a choice away chooses nothing else.
    Write(rig.Element("optPortAdr", 1), "Value", false);
    EXPECT_EQ(rig.part.PortAddress, 632);
}

TEST(FormElements, a_check_box_counts_0_and_1_and_acts_on_a_change) {
    FormRig rig;
    const ObjectRef box = rig.Element("chkPrgmBit", 0);
    EXPECT_EQ(Read(box, "Value"), Value(std::int16_t{0}));
    Write(box, "Value", 1);
    EXPECT_EQ(rig.part.PrgmBits("ENABLE").Value(), 1);
    Write(box, "Value", 1);
    EXPECT_EQ(rig.part.PrgmBits("ENABLE").Value(), 1) << "no change, no click";
    EXPECT_EQ(Read(box, "Value"), Value(std::int16_t{1}));
    Write(rig.Element("chkPrgmPin", 0), "Value", false);
    EXPECT_FALSE(rig.part.PrgmPins("CE").Enabled());
}

TEST(FormElements, a_menus_check_mark_brings_along_what_it_stands_for) {
    FormRig rig;
    Write(rig.Element("mnuVCOFixed"), "Checked", true);
    EXPECT_TRUE(rig.frm.session.bVCOFixed);
    Write(rig.Element("mnuVCOFixed"), "Checked", true);
    EXPECT_TRUE(rig.frm.session.bVCOFixed);
    Write(rig.Element("mnuAutoReload"), "Checked", true);
    EXPECT_EQ(Read(rig.Element("tmrAutoReload"), "Enabled"), Value(true));
    EXPECT_EQ(Read(rig.Element("tmrAutoReload"), "Interval"), Value(10000));
    Write(rig.Element("mnuSave"), "Checked", true); // an entry without a mark of its own
    EXPECT_EQ(Read(rig.Element("mnuSave"), "Checked"), Value(true));
    Write(rig.Element("mnuSave"), "Enabled", false);
    EXPECT_FALSE(rig.frm.menu("mnuSave").Enabled);
}

TEST(FormElements, a_text_waits_for_its_key_and_flags_only_stand) {
    FormRig rig;
    const double n = rig.part.PLLs("Loop").NValue();
    const ObjectRef box = rig.Element("txtNCounter", 1);
    Write(box, "Text", 77);
    EXPECT_EQ(rig.part.PLLs("Loop").NValue(), n);
    EXPECT_EQ(rig.part.PLLs("Loop").panel.txtNCounter.Text, "77");
    Write(box, "BackColor", static_cast<std::int32_t>(colors::kYellow));
    Write(box, "Visible", false);
    EXPECT_EQ(rig.part.PLLs("Loop").panel.txtNCounter.BackColor, colors::kYellow);
    EXPECT_FALSE(rig.part.PLLs("Loop").panel.txtNCounter.Visible);
    EXPECT_THROW(Write(box, "Left", "far"), WrongType);
}

TEST(FormElements, the_bar_of_the_fields_moves_their_frames) {
    FormRig rig;
    const int left = rig.frm.bits.fraPrgmBits[0].Left;
    Write(rig.Element("hscPrgmBits"), "Value", 300);
    EXPECT_EQ(rig.frm.bits.fraPrgmBits[0].Left, left - 300);
    EXPECT_THROW(Write(rig.Element("hscPrgmBits"), "Value", -1), OutOfRange);
    Write(rig.Element("vscPort"), "Value", 5);
    EXPECT_EQ(rig.frm.port.vscPort.Value, 5);
}

TEST(FormElements, the_tab_strip_and_the_status_bar_are_reached_by_number) {
    FormRig rig;
    const ObjectRef tabs = rig.Element("tabPart");
    EXPECT_EQ(Read(tabs, "Tabs"), Value(8));
    EXPECT_EQ(Read(tabs, "TabCaption", {Value(7)}), Value("Clocks"));
    EXPECT_EQ(Read(tabs, "TabVisible", {Value(4)}), Value(false));
    Write(tabs, "Tab", 6);
    EXPECT_EQ(Read(tabs, "Caption"), Value("Loop"));
    EXPECT_THROW(Write(tabs, "Tab", 8), OutOfRange);
    EXPECT_THROW(Read(tabs, "TabCaption", {Value(-1)}), OutOfRange);
    EXPECT_EQ(rig.frm.tabPart.SelectedTab(), 6);

    const ObjectRef bar = rig.Element("StatusBar1");
    const ObjectRef panel = rig.Object(Read(bar, "Panels", {Value(1)}));
    EXPECT_EQ(Read(panel, "Text"), Value("COMM Mode: LPT"));
    EXPECT_THROW(Read(bar, "Panels", {Value(3)}), NotFound);
}

TEST(FormElements, the_other_forms_have_their_own_elements) {
    FormRig rig;
    rig.Call("AddError", {Value("first")});
    rig.Call("AddError", {Value("second")});
    const ObjectRef log = rig.Object(Read(rig.form, "logged_errors"));
    EXPECT_EQ(Read(log, "Count"), Value(2));
    EXPECT_THROW(Read(log, "Item", {Value(3)}), NotFound);

    const ObjectRef list = rig.Element("frmErrorList");
    Read(list, "SetErrors", {Value(log)});
    const ObjectRef text = rig.Object(Read(list, "Text1"));
    EXPECT_THAT(*Read(text, "Text").If<std::string>(), HasSubstr("second\r\n---"));
    Read(list, "SetErrors", {Value(Array{"third"})});
    EXPECT_THAT(*Read(text, "Text").If<std::string>(), HasSubstr("third\r\n\r\n"));
    EXPECT_THROW(Read(list, "SetErrors", {Value(text)}), WrongType);

    Read(log, "Remove", {Value(1)});
    EXPECT_THAT(*Read(log, "Item", {Value(1)}).If<std::string>(), HasSubstr("second"));
    EXPECT_EQ(Read(rig.Element("frmAbout"), "Caption"), Value("About Zentrel"));
    EXPECT_EQ(Read(rig.Element("frmLoopFilter"), "Visible"), Value(false));
}

} // namespace
} // namespace zentrel::objects
