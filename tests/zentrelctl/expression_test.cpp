#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusVariant>

#include "tools/zentrelctl/expression.h"
#include "tools/zentrelctl/json.h"
#include "tools/zentrelctl/text_values.h"

namespace zentrel::ctl {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(Expressions, read_as_scripts_write_them) {
    const auto steps =
        ParseExpression(" Part.PrgmBits( \"A \"\"B\"\", x)\" ).GetBits(8, '4').Value()");
    ASSERT_EQ(steps.size(), 4);
    EXPECT_EQ(steps[0].name, "Part");
    EXPECT_FALSE(steps[0].called);
    EXPECT_THAT(steps[1].arguments, ElementsAre("A \"B\", x)"));
    EXPECT_THAT(steps[1].quoted, ElementsAre(true));
    EXPECT_THAT(steps[2].arguments, ElementsAre("8", "4"));
    EXPECT_THAT(steps[2].quoted, ElementsAre(false, true));
    EXPECT_TRUE(steps[3].called);
    EXPECT_TRUE(steps[3].arguments.empty());
}

TEST(Expressions, that_cant_be_read_tell_where) {
    struct Case {
        const char* text;
        const char* told;
    };
    for (const Case& test : {
             Case{"", "a name is wanted at character 1"},
             Case{"Part.", "a name is wanted at character 6"},
             Case{"Part..ID", "a name is wanted at character 6"},
             Case{"Part ID", "a point or the end is wanted at character 6"},
             Case{"Part.PrgmBits(\"N", "the closing quote is wanted at character 17"},
             Case{"Part.PrgmBits(1 2", "a comma or a closing parenthesis"},
             Case{"Part.PrgmBits(,)", "an argument is wanted at character 15"},
         }) {
        try {
            ParseExpression(test.text);
            ADD_FAILURE() << test.text;
        } catch (const BadExpression& failure) {
            EXPECT_THAT(failure.what(), HasSubstr(test.told)) << test.text;
        }
    }
}

TEST(Words, become_values_of_the_type_that_is_wanted_or_nothing) {
    struct Case {
        const char* word;
        const char* type;
        QVariant value; // invalid: refused
    };
    const std::vector<Case> cases{
        {"2450.5", "d", 2450.5}, {"2450,5", "d", {}}, {"&H7F", "i", 127},
        {"3.5", "i", {}},        {"40000", "n", {}},  {"-3", "n", QVariant::fromValue<short>(-3)},
        {"1e10", "i", {}},       {"-1e300", "n", {}}, {"true", "b", true},
        {"0", "b", false},       {"maybe", "b", {}},  {"7", "s", QStringLiteral("7")},
        {"", "d", {}},
    };
    for (const Case& test : cases) {
        const auto value =
            ValueFromWord(QString::fromLatin1(test.word), QString::fromLatin1(test.type));
        EXPECT_EQ(value.has_value(), test.value.isValid()) << test.word << " as " << test.type;
        if (value) {
            EXPECT_EQ(*value, test.value) << test.word << " as " << test.type;
        }
    }
}

TEST(Words, for_anything_are_numbers_truths_or_texts_and_a_quoted_one_is_a_text) {
    const auto inside = [](const char* word, bool quoted) {
        const auto value = ValueFromWord(QString::fromLatin1(word), QStringLiteral("v"), quoted);
        return value ? Unwrapped(*value) : QVariant();
    };
    EXPECT_EQ(inside("12", false), QVariant(12.0));
    EXPECT_EQ(inside("12", true), QVariant(QStringLiteral("12")));
    EXPECT_EQ(inside("False", false), QVariant(false));
    EXPECT_EQ(inside("N", false), QVariant(QStringLiteral("N")));
}

TEST(Values, are_printed_with_a_point_and_as_json) {
    const QVariantMap map{{QStringLiteral("b"), true}, {QStringLiteral("x"), 0.1 + 0.2}};
    EXPECT_EQ(WordFromValue(0.1 + 0.2).toStdString(), "0.3");
    EXPECT_EQ(WordFromValue(map).toStdString(), "b = True\nx = 0.3");
    EXPECT_EQ(WordFromValue(QVariantList{1, QStringLiteral("two")}).toStdString(), "1\ntwo");
    EXPECT_EQ(JsonOf(QStringLiteral("a \"b\"")).toStdString(), "\"a \\\"b\\\"\"");
    EXPECT_EQ(JsonOf(QVariantList{true, 2450.5}).toStdString(), "[true,2450.5]");
    EXPECT_EQ(
        JsonOf(QVariant::fromValue(QDBusVariant(QVariant::fromValue<short>(-3)))).toStdString(),
        "-3");
}

} // namespace
} // namespace zentrel::ctl
