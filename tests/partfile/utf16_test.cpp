#include "partfile/utf16.h"

#include <gtest/gtest.h>

#include "partfile/ini_file.h"
#include "partfile/memory_store.h"

namespace zentrel {
namespace {

using namespace std::string_literals;

// The UTF-16 bytes of a text.
std::string Wide(std::u16string_view text) {
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

TEST(Utf16, comes_and_goes_without_loss) {
    EXPECT_EQ(FromUtf16(Wide(u"A\u00B5\u20AC\U0001F4E1")), "A\u00B5\u20AC\U0001F4E1");
    EXPECT_EQ(FromUtf16(Wide(u"")), "");
    EXPECT_EQ(ToUtf16("A\u00B5\u20AC\U0001F4E1"), Wide(u"A\u00B5\u20AC\U0001F4E1"));
    std::u16string all;
    for (std::uint32_t unit = 0; unit < 0x10000; ++unit)
        all += static_cast<char16_t>(unit);
    all += all; // ends and begins, too, with what is half a pair
    EXPECT_EQ(ToUtf16(FromUtf16(Wide(all)).value_or("")), Wide(all));
    EXPECT_EQ(ToUtf16("\xB5\xE2\x82 \xF4\x90\x80\x80\xC0\x80"),
              Wide(u"\u00B5\u00E2\u0082 \u00F4\u0090\u0080\u0080\u00C0\u0080"));
}

TEST(Utf16, is_told_by_its_mark) {
    for (const auto& bytes : {""s, "\xFF"s, "\xFE\xFF\0A"s, "A\0"s}) {
        EXPECT_EQ(FromUtf16(bytes), std::nullopt);
    }
    EXPECT_EQ(FromUtf16("\xFF\xFE\x41"), "A"); // cut off in the middle of a character
}

// Found by fuzzing: such a file was taken for bytes, and for UTF-16 once it had grown.
TEST(Utf16, files_of_an_odd_length_read_the_same_before_and_after_a_write) {
    MemoryStore::Files stored;
    IniFiles files(AppPath("/z"), std::make_unique<MemoryStore>(stored));
    stored.bytes["/a.ini"] = Wide(u"[s]\nk=1\n") + ';';
    EXPECT_TRUE(files.SetPrivateSetting("/a.ini", "s", "l", "2"));
    EXPECT_EQ(stored.bytes["/a.ini"], Wide(u"[s]\nk=1\nl=2\n;"));
}

TEST(Utf16, ini_files_stay_so_when_they_are_written) {
    MemoryStore::Files stored;
    IniFiles files(AppPath("/z"), std::make_unique<MemoryStore>(stored));
    stored.bytes["/a.ini"] = Wide(u"[s]\r\nk=5 \u00B5A\r\n; \xD800\r\n");
    EXPECT_EQ(files.GetPrivateSetting("/a.ini", "s", "k", ""), "5 \u00B5A");
    EXPECT_TRUE(files.SetPrivateSetting("/a.ini", "s", "k", "6 \u00B5A"));
    EXPECT_EQ(stored.bytes["/a.ini"], Wide(u"[s]\r\nk=6 \u00B5A\r\n; \xD800\r\n"));
}

// As the platform's own calls have it: the mark of UTF-8 is part of the first line.
TEST(Utf8, mark_spoils_the_first_line_and_no_other) {
    const IniText ini("\xEF\xBB\xBF[s]\nk=1\n[t]\nk=2\n");
    EXPECT_EQ(ini.Find("s", "k"), std::nullopt);
    EXPECT_EQ(ini.Find("t", "k"), "2");
}

} // namespace
} // namespace zentrel
