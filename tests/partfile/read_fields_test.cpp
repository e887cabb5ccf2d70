#include "partfile/part_definition.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/partfile/read_part.h"

namespace zentrel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(PartDefaults, of_a_field) {
    const PartDefinition part = ReadPart("[BITS]\nCOUNT=3\n");
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
    for (const auto& text : {field.reg, field.units, field.linkedBits, field.mirrorBits,
                             field.stepValueBitName, field.scriptName, field.scriptOnLoad,
                             field.scriptBeforeProg, field.scriptAfterProg, field.greaterBits}) {
        EXPECT_EQ(text, "");
    }
    EXPECT_EQ(field.description, "Register [1]\n\r");
    EXPECT_TRUE(field.greaterThan);
    EXPECT_FALSE(field.polarity);
    EXPECT_EQ(field.polarityPosition, 0);
    EXPECT_FALSE(field.polarityInverted);
    EXPECT_FALSE(field.dataInverted);
}

TEST(PartFields, take_all_their_keys) {
    const PartDefinition part = ReadPart(R"([BITS]
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
    const PartDefinition part =
        ReadPart("[BITS]\nCOUNT=6\nTYPE00=Bit\nTYPE01=Counter\nTYPE02=List\n"
                 "TYPE03=bit\nTYPE04=Bits\nTYPE05=\n");
    std::vector<FieldControl> controls;
    for (const FieldEntry& field : part.fields)
        controls.push_back(field.control);
    EXPECT_THAT(controls,
                ElementsAre(FieldControl::kCheckBox, FieldControl::kSpinBox, FieldControl::kList,
                            FieldControl::kNone, FieldControl::kNone, FieldControl::kNone));
}

TEST(PartFields, have_lists_of_texts_of_numbers_or_of_numbers_with_codes) {
    const PartDefinition part = ReadPart(R"([BITS]
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
    const PartDefinition part = ReadPart("[BITS]\nCOUNT=4\n"
                                         "REG00=R1\nPOS00=5\nDESCRIPTION00=what\n"
                                         "REG01=R1\nPOS01=5\nLEN01=4\nDESCRIPTIONWHY01=why\n"
                                         "DESCRIPTION02=what\nDESCRIPTIONWHY02=why\n"
                                         "POS03=32767\nLEN03=32767\n");
    EXPECT_EQ(part.fields[0].description, "Register R1[5]\n\rwhat");
    EXPECT_EQ(part.fields[1].description, "Register R1[8:5]     Length: 4\n\rwhy");
    EXPECT_EQ(part.fields[2].description, "Register [1]\n\rwhat\n\r\n\rwhy");
    EXPECT_EQ(part.fields[3].description, "Register [65533:32767]     Length: 32767\n\r");
}

} // namespace
} // namespace zentrel
