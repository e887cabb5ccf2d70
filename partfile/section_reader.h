#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "partfile/ini_text.h"
#include "partfile/problems.h"

namespace zentrel {

/// Reads the keys of one section, converts them, and notes what can't be converted. A missing key
/// gives its default; so does a value that is no number of its kind, with a problem noted.
class SectionReader {
  public:
    SectionReader(const IniText& text, std::string_view file, std::string_view section,
                  std::vector<Problem>& problems);

    /// From here on keys are a word with this number behind it; `digits` at least.
    void SetEntry(int entry, int digits = 2);
    /// The number of the current entry as it stands in its keys.
    const std::string& EntryText() const { return entry_; }

    std::string Text(std::string_view word, std::string_view defaultValue = {});
    std::int16_t Int(std::string_view word, std::int16_t defaultValue);
    std::int32_t Long(std::string_view word, std::int32_t defaultValue);
    double Real(std::string_view word, double defaultValue);
    bool Bool(std::string_view word, bool defaultValue);
    /// An integer that is converted through a double and rounded down.
    std::int16_t FloorInt(std::string_view word, std::int16_t defaultValue);
    /// A COUNT: Int with default 0, and 0 for a negative one.
    int Count(std::string_view word = "COUNT");

    /// The value as it stands, if the key is there; good until the text changes.
    std::optional<std::string_view> Raw(std::string_view word);

    /// Notes that `used` was taken instead of what stands under the key.
    void Note(std::string_view word, std::string used);

  private:
    std::string_view Key(std::string_view word);
    template<typename Value, typename Parse, typename Show>
    Value Convert(std::string_view word, Value defaultValue, Parse parse, Show show);

    const IniText& text_;
    std::string_view file_;
    std::string_view section_;
    std::optional<IniText::SectionId> id_;
    std::vector<Problem>& problems_;
    std::string entry_;
    std::string key_;
};

} // namespace zentrel
