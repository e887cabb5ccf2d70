#include "device/prgmbits.h"

#include <cmath>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/errors.h"
#include "tests/device/device_fixture.h"

namespace zentrel {
namespace {

using test::Device;
using testing::ElementsAre;

/// One field of each kind on a 24-bit word: four bits from bit 8 up.
struct Kinds : Device {
    cRegister& word = Word("R");
    cPrgmBits& plain = Field("PLAIN", "R", 8, 4);
    cPrgmBits& values = Field("VALUES", "R", 8, 4);
    cPrgmBits& texts = Field("TEXTS", "R", 8, 4);
    cPrgmBits& coded = Field("CODED", "R", 8, 4);
    cPrgmBits& constant = Field("CONSTANT", "R", -1, 4);

    Kinds() {
        plain.ZeroValue = 1;
        plain.StepValue = 2.5;
        plain.Units = "mA";
        values.SetValueArray({0.95, 1.9, 2.85});
        texts.SetStringArray({"2", "4.5", "off", "&H10"});
        coded.SetValueArray({1, 2, 4, 8});
        coded.SetStringArray({"0", "3", "5", "9"});
        constant.SetValueArray({7.5, 9});
    }
    void Bits(int bits) { word.SetBits(bits, 8, 4); }
};

TEST(ProgramBits, each_kind_means_its_bits_in_its_own_way) {
    Kinds device;
    const struct {
        int bits;
        const cPrgmBits* field;
        double value;
        const char* text;
    } cases[] = {
        {0, &device.plain, 1, "1mA"},        {2, &device.plain, 6, "6mA"},
        {15, &device.plain, 38.5, "38.5mA"}, {0, &device.values, 0.95, "0.95"},
        {2, &device.values, 2.85, "2.85"},   {0, &device.texts, 2, "2"},
        {1, &device.texts, 4.5, "4.5"},      {3, &device.texts, 16, "&H10"},
        {0, &device.coded, 1, "1"},          {3, &device.coded, 2, "8"},
    };
    for (const auto& c : cases) {
        device.Bits(c.bits);
        EXPECT_EQ(c.field->BitValue(), c.bits) << c.field->ID;
        EXPECT_EQ(c.field->Value(), c.value) << c.field->ID << " at " << c.bits;
        EXPECT_EQ(c.field->Text(), c.text) << c.field->ID << " at " << c.bits;
    }
    device.Bits(7);
    EXPECT_EQ(device.coded.Value(), 0) << "no entry bears that code";
}

TEST(ProgramBits, a_field_without_bits_is_the_first_entry_of_its_list) {
    Kinds device;
    EXPECT_EQ(device.constant.BitValue(), -1);
    EXPECT_EQ(device.constant.Value(), 7.5);
    EXPECT_EQ(device.constant.Text(), "7.5");
    device.constant.SetValueArray({0});
    device.constant.SetStringArray({"32", "64"});
    EXPECT_EQ(device.constant.Value(), 32);
    EXPECT_EQ(device.constant.Text(), "32");
}

TEST(ProgramBits, bits_beyond_the_list_are_a_typed_error) {
    Kinds device;
    device.Bits(3);
    EXPECT_THROW((void)device.values.Value(), OutOfRange);
    EXPECT_THROW((void)device.values.Text(), OutOfRange);
    device.Bits(4);
    EXPECT_THROW((void)device.texts.Value(), OutOfRange);
    EXPECT_THROW((void)device.texts.Text(), OutOfRange);
    EXPECT_EQ(device.texts.GetValueText(), "NOSTRING");
    EXPECT_THROW((void)device.coded.Text(), OutOfRange);
    device.Bits(2);
    EXPECT_THROW((void)device.texts.Value(), TypeMismatch) << "the entry says \"off\"";
    EXPECT_EQ(device.texts.Text(), "off");
}

TEST(ProgramBits, a_list_of_one_entry_is_no_list) {
    Kinds device;
    device.plain.SetValueArray({99});
    device.plain.SetStringArray({"99"});
    device.Bits(2);
    EXPECT_EQ(device.plain.Value(), 6);
    EXPECT_EQ(device.plain.ArrayCount(), 0);
    EXPECT_EQ(device.plain.GetValueText(), "NOSTRING");
    EXPECT_EQ(device.values.ArrayCount(), 3);
    EXPECT_EQ(device.texts.ArrayCount(), 4);
    std::vector<std::string> out;
    EXPECT_EQ(device.texts.GetStringArray(out), 3);
    EXPECT_THAT(out, ElementsAre("2", "4.5", "off", "&H10"));
    device.values.SetValueArray({});
    EXPECT_EQ(device.values.ArrayCount(), 0);
}

TEST(ProgramBits, the_largest_value_follows_from_bits_or_list) {
    Kinds device;
    EXPECT_EQ(device.plain.Maximum(), 15 * 2.5 + 1);
    EXPECT_EQ(device.values.Maximum(), 2.85);
    EXPECT_EQ(device.texts.Maximum(), 16) << "the numeric strings count";
    EXPECT_EQ(device.coded.Maximum(), 8);
    device.values.SetValueArray({-3, -1});
    EXPECT_EQ(device.values.Maximum(), 0) << "not below 0";
    device.texts.SetStringArray({"off", "on"});
    EXPECT_EQ(device.texts.Maximum(), 15) << "no number in the list: the bits decide";
    cPrgmBits& wide = device.Field("WIDE", "R", 0, 3);
    wide.ZeroValue = 1;
    wide.StepValue = 2.5;
    EXPECT_EQ(wide.Maximum(), 18.5);
    EXPECT_EQ(wide.Minimum(), 0);
    wide.Polarity = true;
    EXPECT_EQ(wide.Minimum(), -18) << "-18.5 to even";
}

TEST(ProgramBits, the_sign_bit_multiplies_zero_in_the_value_and_all_in_the_text) {
    Kinds device;
    device.plain.Polarity = true;
    device.plain.PolarityPosition = 20;
    device.Bits(2);
    const struct {
        bool bit, inverted;
        int sign;
        double value;
        const char* text;
    } cases[] = {
        {true, false, 1, 6, "6mA"},
        {false, false, -1, 4, "-6mA"},
        {true, true, -1, 4, "-6mA"},
        {false, true, 1, 6, "6mA"},
    };
    for (const auto& c : cases) {
        device.word.SetBits(c.bit ? 1 : 0, 20, 1);
        device.plain.PolarityInverted = c.inverted;
        EXPECT_EQ(device.plain.PolarityValue(), c.sign);
        EXPECT_EQ(device.plain.Value(), c.value);
        EXPECT_EQ(device.plain.Text(), c.text);
    }
    device.plain.SetNegative();
    EXPECT_EQ(device.word.GetBits(20, 1), 1) << "inverted: 1 is negative";
    device.plain.SetPositive();
    EXPECT_EQ(device.word.GetBits(20, 1), 0);
    device.plain.Polarity = false;
    device.plain.SetNegative();
    EXPECT_EQ(device.word.GetBits(20, 1), 0) << "without a sign nothing is written";
}

TEST(ProgramBits, a_chain_reads_as_one_number) {
    Device device;
    device.Word("LOW").SetBits(0x345, 4, 12);
    device.Word("HIGH").SetBits(0x12, 0, 8);
    cPrgmBits& low = device.Field("N", "LOW", 4, 12);
    cPrgmBits& high = device.Field("N_HIGH", "HIGH", 0, 8);
    low.LinkedBits = "n_high";
    high.StepValue = 4096;
    EXPECT_EQ(low.BitValue(), 0x12345);
    EXPECT_EQ(low.Value(), 0x12345);
    EXPECT_EQ(low.Text(), "74565");
    EXPECT_EQ(low.TotalLength(), 20);
    EXPECT_EQ(low.Maximum(), 0xFFFFF);
    low.FormatString = "#,##0";
    EXPECT_EQ(low.Text(), "74,565");
    high.StepValue = -4096;
    EXPECT_EQ(low.Value(), -0x12000 - 0x345) << "a negative high part takes the low part with it";
    EXPECT_EQ(low.Text(), "-74,565");
}

TEST(ProgramBits, a_step_comes_from_another_field_when_named) {
    Kinds device;
    cPrgmBits& step = device.Field("STEP", "R", 0, 3);
    device.plain.StepValueBitName = step.ID;
    device.Bits(2);
    step.SetBitValue(5);
    EXPECT_EQ(device.plain.Value(), 11);
    EXPECT_EQ(device.plain.Text(), "11mA");
    EXPECT_EQ(device.plain.Maximum(), 76);
}

TEST(ProgramBits, reversed_bits_read_mirrored) {
    Kinds device;
    device.plain.DataInverted = true;
    device.Bits(0b0011);
    EXPECT_EQ(device.plain.BitValue(), 0b1100);
}

TEST(ProgramBits, a_missing_higher_part_is_told_and_counts_as_absent_in_the_bits_alone) {
    Kinds device;
    device.plain.LinkedBits = "GONE";
    device.Bits(3);
    EXPECT_EQ(device.plain.BitValue(), 3);
    EXPECT_THAT(device.messages.shown,
                ElementsAre("Error... No program bit: GONE required for: tmpLng = "
                            "Part.PrgmBits(m_sLinkedBits).BitValue"));
    EXPECT_THROW((void)device.plain.Value(), NotFound);
    EXPECT_THROW((void)device.plain.Text(), NotFound);
    EXPECT_THROW((void)device.plain.Maximum(), NotFound);
    EXPECT_THROW((void)device.plain.TotalLength(), NotFound);
    EXPECT_EQ(device.messages.shown.size(), 1U);
}

TEST(ProgramBits, a_name_that_leads_nowhere_tells_collection_and_key) {
    Kinds device;
    device.plain.StepValueBitName = "NO_STEP";
    try {
        (void)device.plain.Value();
        FAIL();
    } catch (const NotFound& missing) {
        EXPECT_EQ(missing.collection(), "PrgmBits");
        EXPECT_EQ(missing.key(), "NO_STEP");
    }
    cPrgmBits& lost = device.Field("LOST", "NOWHERE", 0, 4);
    EXPECT_THROW((void)lost.BitValue(), NotFound);
    EXPECT_THROW((void)lost.Text(), NotFound);
}

TEST(ProgramBits, fields_that_refer_back_to_themselves_end_in_error_28) {
    Kinds device;
    device.plain.LinkedBits = "PLAIN";
    device.texts.StepValueBitName = "TEXTS";
    device.texts.SetStringArray({"one"});
    const auto number = [](auto read) {
        try {
            read();
        } catch (const Error& error) {
            return error.number();
        }
        return 0;
    };
    EXPECT_EQ(number([&] { (void)device.plain.BitValue(); }), 28);
    EXPECT_EQ(number([&] { (void)device.plain.Value(); }), 28);
    EXPECT_EQ(number([&] { (void)device.plain.Text(); }), 28);
    EXPECT_EQ(number([&] { (void)device.plain.Maximum(); }), 28);
    EXPECT_EQ(number([&] { (void)device.plain.TotalLength(); }), 28);
    EXPECT_EQ(number([&] { (void)device.texts.Value(); }), 28);
}

TEST(ProgramBits, references_that_branch_at_every_field_end_as_well) {
    Device device;
    device.Word("R");
    for (int i = 0; i < 50; ++i) {
        cPrgmBits& field = device.Field(std::to_string(i), "R", 0, 1);
        if (i < 49) field.LinkedBits = field.StepValueBitName = std::to_string(i + 1);
    }
    EXPECT_THROW((void)device.part.PrgmBits("0").Value(), EndlessReference);
    EXPECT_EQ(device.part.PrgmBits("49").Value(), 0);
}

} // namespace
} // namespace zentrel
