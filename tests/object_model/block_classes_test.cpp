#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/object_model/form_rig.h"

namespace zentrel::objects {
namespace {

ObjectRef ItemOf(const ObjectRef& part, const char* collection, const Value& index) {
    const ObjectRef items = FormRig::Object(Read(part, collection));
    return FormRig::Object(Read(items, "Item", {index}));
}

TEST(BlockClasses, a_pll_is_planned_by_name) {
    FormRig rig;
    const ObjectRef pll = ItemOf(RefTo(rig.part), "PLLs", "loop");
    Write(pll, "RValue", 10);
    EXPECT_EQ(Read(pll, "PDFrequency"), Value(1000.0));
    Write(pll, "NValue", "123.6"); // an integer PLL, and a text that is a number
    EXPECT_EQ(Read(pll, "NValue"), Value(124.0));
    EXPECT_EQ(Read(pll, "LinkedCLKDistInt"), Value(std::int16_t{1}));
    Write(pll, "Numerator", "N");
    EXPECT_EQ(Read(pll, "NumeratorName"), Value("N"));
    EXPECT_THROW(Read(pll, "Numerator"), WrongAccess);
    EXPECT_THROW(Write(pll, "Doubler", 2), WrongAccess);
    EXPECT_THROW(Write(pll, "extra_pll_n_div_1", 70000), Overflow);
    Write(pll, "extra_pll_n_div_1", 3);
    Read(pll, "save_extra_pll_n_div_1");
    EXPECT_THAT(rig.folder.Read("Conditioner.ini"), testing::HasSubstr("EXTRA_PLL_N_DIV_1_00=3"));
    EXPECT_EQ(Read(pll, "Parent"), Value(RefTo(rig.part)));
}

TEST(BlockClasses, a_clock_block_hands_out_its_names_and_frequencies) {
    FormRig rig;
    // Its key is the count before it was added.
    const ObjectRef block = ItemOf(RefTo(rig.part), "ClkDists", "0");
    EXPECT_EQ(Read(block, "ID"), Value("Clocks"));
    EXPECT_EQ(Read(block, "GetClkMuxName", {Value(1)}), Value("MUX1"));
    EXPECT_EQ(Read(block, "GetClkMuxName", {Value(8)}), Value(""));
    EXPECT_THROW(Read(block, "GetClkMuxName", {Value(9)}), OutOfRange);
    Read(block, "SetClkEnableName", {Value(0), Value("ENABLE")});
    EXPECT_EQ(Read(block, "GetClkEnableName", {Value(0)}), Value("ENABLE"));
    Write(block, "ExtSRC_Freq", 640);
    Write(rig.Element("cbClkInputMux", 1), "ListIndex", 2);
    EXPECT_EQ(Read(block, "GetSourceFrequency"), Value(640.0));
    Write(block, "InputDivBypVal", -1);
    EXPECT_EQ(Read(block, "InputDivBypVal"), Value(std::int16_t{-1}));
}

TEST(BlockClasses, a_burst_command_is_edited_word_by_word) {
    FormRig rig;
    const ObjectRef part = RefTo(rig.part);
    Read(part, "AddBurstCommand", {Value("7"), Value(2)});
    Read(part, "AddBurstCommand", {Value(""), Value(1)});
    const ObjectRef delay = ItemOf(part, "BurstCmds", 1);
    EXPECT_EQ(Read(delay, "Delay"), Value(7));
    EXPECT_EQ(Read(delay, "Pattern"), Value("Delay of 7"));
    Write(delay, "Register", 12);
    EXPECT_EQ(Read(delay, "Delay"), Value(12));
    const ObjectRef pins = ItemOf(part, "BurstCmds", 2);
    EXPECT_EQ(Read(pins, "GetRegLoad_Count"), Value(1));
    Read(pins, "SetRegLoad", {Value(0), Value(5)});
    EXPECT_EQ(Read(pins, "GetRegLoad", {Value(0)}), Value(std::int16_t{5}));
    EXPECT_THROW(Read(pins, "GetRegLoad", {Value(2)}), OutOfRange);
    EXPECT_THROW(Write(pins, "Command", 3), OutOfRange);
    Write(pins, "Command", 2);
    EXPECT_EQ(Read(pins, "Command"), Value(std::int16_t{2}));
}

TEST(BlockClasses, a_changed_argument_comes_back) {
    FormRig rig;
    const ObjectRef part = RefTo(rig.part);
    std::vector<Value> arguments{Value("11111")};
    EXPECT_EQ(Read(part, part.table().At("ConvertBinaryToHex"), arguments), Value("1F"));
    EXPECT_EQ(arguments[0], Value("00011111"));
    EXPECT_TRUE(part.table().At("ConvertBinaryToHex").parameters[0].byReference);
    Read(part, "SetupFraction", {Value("N"), Value("R")});
    EXPECT_EQ(Read(ItemOf(part, "PLLs", 1), "DenominatorName"), Value("R"));
    EXPECT_TRUE(Read(part, "SetupLoopFilter").IsEmpty());
    EXPECT_THROW(Read(part, "AddPLLTab", {Value("none"), Value(1), Value(1), Value(1)}), NotFound);
    Read(part, "AddPLLTab", {Value("Loop"), Value(1), Value(1), Value(1)});
    Read(part, "AddClkDistsTab", {Value("Clocks"), Value(1), Value(1)});
    EXPECT_EQ(rig.frm.tabPart.TabCount(), 10);
    EXPECT_EQ(rig.frm.tabPart.TabCaption(8), "Loop");
}

} // namespace
} // namespace zentrel::objects
