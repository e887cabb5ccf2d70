#include "partfile/ini_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zentrel {
namespace {

using namespace std::string_literals;

struct Lookup {
    std::string text;
    std::string section;
    std::string key;
    std::optional<std::string> value;
};

std::string Numbered(std::string_view word, int number) {
    return std::string(word).append(std::to_string(number));
}

void ExpectLookups(const std::vector<Lookup>& cases) {
    for (const Lookup& lookup : cases) {
        const IniText ini(lookup.text);
        const auto found = ini.Find(lookup.section, lookup.key);
        EXPECT_EQ(found ? std::optional<std::string>(*found) : std::nullopt, lookup.value)
            << "[" << lookup.section << "] " << lookup.key << " in\n"
            << lookup.text;
    }
}

TEST(IniText, any_line_end_ends_a_line) {
    for (const std::string end : {"\r\n", "\n", "\r"}) {
        std::string text;
        for (const auto* line : {"[a]", "k=1", "", "l=2", "[b]", "k=3"}) {
            text.append(line).append(end);
        }
        const IniText ini(text);
        EXPECT_EQ(ini.Find("a", "k"), "1");
        EXPECT_EQ(ini.Find("a", "l"), "2");
        EXPECT_EQ(ini.Find("b", "k"), "3");
    }
    ExpectLookups({{"[a]\rk=1\nl=2\r\nm=3\n\rn=4", "a", "n", "4"},
                   {"[a]\rk=1\nl=2\r\nm=3\n\rn=4", "a", "l", "2"},
                   {"[a]\nk=1\r", "a", "k", "1"}});
}

TEST(IniText, a_section_is_found_by_what_stands_up_to_the_first_bracket) {
    ExpectLookups({{" \t\v[ sec\t]\nk=v", "sec", "k", "v"},
                   {"[SEC]\nKey=v", "sec", "kEY", "v"},
                   {"[sec]tail=1\nk=v", "sec", "k", "v"},
                   {"[sec]k=v", "sec", "k", {}},
                   {"[a]b]\nk=v", "a", "k", "v"},
                   {"[sec\nk=v", "sec", "k", "v"},
                   {"[sec  \nk=v", "sec", "k", "v"},
                   {"sec]\nk=v", "sec", "k", {}},
                   {"[[sec]\nk=v", "[sec", "k", "v"},
                   {"[;sec]\nk=v", ";sec", "k", "v"},
                   {"[\"sec\"]\nk=v", "sec", "k", {}},
                   {"[\"sec\"]\nk=v", "\"sec\"", "k", "v"},
                   {"[]\nk=v", "", "k", "v"},
                   {"k=v\n[sec]\n", "", "k", {}},
                   {"\0\0k=v\n[sec]\nk=w"s, "sec", "k", "w"}});
}

TEST(IniText, of_two_equal_names_the_first_counts) {
    const IniText ini("[a]\nk=1\nK=2\n[b]\nk=3\n[A]\nk=4\nonly=5\n");
    EXPECT_EQ(ini.Find("a", "k"), "1");
    EXPECT_EQ(ini.Find("b", "k"), "3");
    EXPECT_EQ(ini.Find("a", "only"), std::nullopt);
}

TEST(IniText, spaces_around_a_name_asked_for_dont_count_but_tabs_do) {
    ExpectLookups({{"[Test]\nk=v", "  Test   ", " k ", "v"},
                   {"[Test]\nk=v", "\tTest", "k", {}},
                   {"[Test]\nk=v", "Test", "k\t", {}}});
}

TEST(IniText, a_key_is_a_line_with_an_equals_sign) {
    ExpectLookups({{"[s]\n \t\vkey\t = \v v w \t", "s", "key", "v w"},
                   {"[s]\nkey", "s", "key", {}},
                   {"[s]\nkey=", "s", "key", ""},
                   {"[s]\n=value", "s", "", "value"},
                   {"[s]\na=b=c", "s", "a", "b=c"},
                   {"[s]\n#k=v", "s", "#k", "v"},
                   {"[s]\n\"k\"=v", "s", "k", {}},
                   {"[s]\nk\0y=v\0w"s, "s", "k\0y"s, "v\0w"s},
                   {"[s]\nk;l=v", "s", "k;l", "v"},
                   {"[s]\nk=\xC4\xD6", "s", "k", "\xC4\xD6"}});
}

TEST(IniText, a_semicolon_makes_a_comment_only_at_the_start_of_a_line) {
    ExpectLookups({{"[s]\n;k=v", "s", "k", {}},
                   {"[s]\n  ;k=v", "s", ";k", {}},
                   {"[s]\nk=;v", "s", "k", ";v"},
                   {"[s]\nk=v ; w", "s", "k", "v ; w"}});
}

TEST(IniText, one_pair_of_double_quotes_goes) {
    ExpectLookups({{"[s]\nk= \" v \" ", "s", "k", " v "},
                   {"[s]\nk=\"\"v\"\"", "s", "k", "\"v\""},
                   {"[s]\nk=\"\"", "s", "k", ""},
                   {"[s]\nk=\"", "s", "k", "\""},
                   {"[s]\nk=\"v", "s", "k", "\"v"},
                   {"[s]\nk='v'", "s", "k", "'v'"},
                   {"[s]\nk='\"v\"'", "s", "k", "'\"v\"'"},
                   {"[s]\nk=\"v'", "s", "k", "\"v'"}});
}

struct Change {
    std::string before;
    std::string section;
    std::string key;
    std::string value;
    std::string after;
};

TEST(IniText, a_change_touches_its_own_line_alone) {
    const std::vector<Change> changes = {
        // In place: the order of keys and the spelling of names stay, the comment too.
        {"[S]\r\n;c\r\nKey=1\r\nl=2\r\n", "s", "kEY", "x", "[S]\r\n;c\r\nKey=x\r\nl=2\r\n"},
        {"[s]\n  k = \"1\"  \nl=2", "s", "k", "x", "[s]\n  k = x\nl=2"},
        {"[s]\nk=1\nk=2\n", "s", "k", "x", "[s]\nk=x\nk=2\n"},
        {"[s]\nk=\n", "s", "k", "x", "[s]\nk=x\n"},
        {"[s]\nk=1\n", "s", "k", "", "[s]\nk=\n"},
        {"[s]\nk=1", "s", "k", "x", "[s]\nk=x\n"},
        {"[s]\nk=", "s", "k", "x", "[s]\nk=x\n"},
        {"[s]\rk=1", "s", "k", "x", "[s]\rk=x\r"},
        // A new key goes behind the last real key: comments, blank lines and odd lines stay behind.
        {"[s]\r\nk=1\r\n;c\r\n\r\n[t]\r\n", "s", "l", "x",
         "[s]\r\nk=1\r\nl=x\r\n;c\r\n\r\n[t]\r\n"},
        {"[s]\nk=1\nbare\n", "s", "bare", "x", "[s]\nk=1\nbare=x\nbare\n"},
        {"[s]\n;c\n[t]\n", "s", "k", "x", "[s]\nk=x\n;c\n[t]\n"},
        {"[s]\nk=1\n[t]\n[s]\nl=2\n", "s", "l", "x", "[s]\nk=1\nl=x\n[t]\n[s]\nl=2\n"},
        {"[s]\nk=1", "s", "l", "x", "[s]\nk=1\nl=x\n"},
        {"[s]", "s", "k", "x", "[s]\r\nk=x\r\n"},
        {"[s\r", "s", "k", "x", "[s\rk=x\r"},
        // A new section goes to the end, with no blank line ahead of it.
        {"", "s", "k", "x", "[s]\r\nk=x\r\n"},
        {"[t]\nk=1", "s", "k", "x", "[t]\nk=1\n[s]\nk=x\n"},
        {"[t]\r\n\r\n", "s", "k", "x", "[t]\r\n\r\n[s]\r\nk=x\r\n"},
        {"\0\0rubbish\n"s, "s", "k", "x", "\0\0rubbish\n[s]\nk=x\n"s},
        // Names lose the spaces around them, values nothing.
        {"", " s ", " k ", "  x ", "[s]\r\nk=  x \r\n"},
        {"[s]\nk=1\n", "s", "k", "\"x\"", "[s]\nk=\"x\"\n"},
        // A key that is a comment is never found again.
        {"[s]\nk=1\n;c=2\n", "s", ";c", "x", "[s]\nk=1\n;c=x\n;c=2\n"},
    };
    for (const Change& change : changes) {
        IniText ini(change.before);
        ini.Set(change.section, change.key, change.value);
        EXPECT_EQ(ini.Text(), change.after) << "before:\n" << change.before;
    }
}

TEST(IniText, several_changes_keep_their_order_and_read_back) {
    IniText ini("[s]\nk=1\n;end\n[t]\nk=2");
    ini.Set("s", "b", "1");
    ini.Set("t", "k", " \"quoted\" ");
    ini.Set("s", "a", "2");
    ini.Set("u", "z", "3");
    ini.Set("s", "B", "4");
    ini.Set("u", "y", "5");
    ini.Set("s", "k", "6");
    EXPECT_EQ(ini.Find("s", "b"), "4");
    EXPECT_EQ(ini.Find("t", "k"), "quoted");
    EXPECT_EQ(ini.Find("u", "y"), "5");
    EXPECT_EQ(ini.Text(), "[s]\nk=6\nb=4\na=2\n;end\n[t]\nk= \"quoted\" \n[u]\nz=3\ny=5\n");
    EXPECT_EQ(IniText(ini.Text()).Text(), ini.Text());
}

TEST(IniText, what_reads_otherwise_than_it_was_written_reads_as_from_the_file) {
    for (const auto& [section, key, value] :
         {std::tuple("s", "k", "one\r\nl=two"), std::tuple("s", "a=b", "c"),
          std::tuple("s]", "k", "v"), std::tuple("\ts", "k", "v"), std::tuple("s", ";k", "v"),
          std::tuple("s", "[k", "v"), std::tuple("s", "k\n", "v")}) {
        IniText ini("[s]\nx=1\n");
        ini.Set(section, key, value);
        const IniText again(ini.Text());
        for (const auto* name : {"k", "l", "a", "a=b", ";k", "[k", "x"}) {
            EXPECT_EQ(ini.Find("s", name), again.Find("s", name)) << key << ' ' << name;
            EXPECT_EQ(ini.Find(section, name), again.Find(section, name)) << key << ' ' << name;
        }
    }
}

TEST(IniText, untouched_lines_stay_byte_for_byte_whatever_they_hold) {
    std::string rubbish;
    for (int i = 0; i < 256; ++i)
        rubbish += static_cast<char>(i);
    std::string text = rubbish;
    text.append("\r[s]\n").append(rubbish).append("\nk=1\r\n").append(rubbish);
    EXPECT_EQ(IniText(text).Text(), text);
    IniText ini(text);
    ini.Set("s", "k", "2");
    std::string expected = text;
    expected[expected.find("k=1") + 2] = '2';
    EXPECT_EQ(ini.Text(), expected);
}

TEST(IniText, a_large_file_is_found_again_key_by_key) {
    constexpr int kSections = 40;
    constexpr int kKeys = 500;
    std::string text;
    for (int s = 0; s < kSections; ++s) {
        text.append(Numbered("[S", s)).append("]\n");
        for (int k = 0; k < kKeys; ++k) {
            text.append(Numbered("KEY", k)).append(Numbered("=", s * k)).append("\n");
        }
    }
    const IniText ini(text);
    for (int s = 0; s < kSections; ++s) {
        const auto section = ini.FindSection(Numbered("s", s));
        ASSERT_TRUE(section);
        for (int k = 0; k < kKeys; ++k) {
            ASSERT_EQ(ini.Find(*section, Numbered("key", k)), std::to_string(s * k));
        }
        EXPECT_EQ(ini.Find(*section, "key500"), std::nullopt);
    }
}

} // namespace
} // namespace zentrel
