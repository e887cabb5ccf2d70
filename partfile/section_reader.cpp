#include "partfile/section_reader.h"

#include <algorithm>
#include <cmath>

#include "device/number_text.h"

namespace zentrel {

SectionReader::SectionReader(const IniText& text, std::string_view file, std::string_view section,
                             std::vector<Problem>& problems)
    : text_(text), file_(file), section_(section), id_(text.FindSection(section)),
      problems_(problems) {}

void SectionReader::SetEntry(int entry, int digits) {
    entry_ = KeyNumber(entry, digits);
}

std::string_view SectionReader::Key(std::string_view word) {
    key_.assign(word);
    key_ += entry_;
    return key_;
}

std::optional<std::string_view> SectionReader::Raw(std::string_view word) {
    return id_ ? text_.Find(*id_, Key(word)) : std::nullopt;
}

std::string SectionReader::Text(std::string_view word, std::string_view defaultValue) {
    return std::string(Raw(word).value_or(defaultValue));
}

void SectionReader::Note(std::string_view word, std::string used) {
    const std::string value(Raw(word).value_or(""));
    problems_.push_back({std::string(file_), std::string(section_), std::string(Key(word)), value,
                         std::move(used)});
}

template<typename Value, typename Parse, typename Show>
Value SectionReader::Convert(std::string_view word, Value defaultValue, Parse parse, Show show) {
    const auto raw = Raw(word);
    if (!raw) return defaultValue;
    if (const std::optional<Value> value = parse(*raw)) return *value;
    Note(word, show(defaultValue));
    return defaultValue;
}

std::int16_t SectionReader::Int(std::string_view word, std::int16_t defaultValue) {
    return Convert(word, defaultValue, ParseFileInt16, NumberToText);
}

std::int32_t SectionReader::Long(std::string_view word, std::int32_t defaultValue) {
    return Convert(word, defaultValue, ParseFileInt32, NumberToText);
}

double SectionReader::Real(std::string_view word, double defaultValue) {
    return Convert(word, defaultValue, ParseNumber, NumberToText);
}

bool SectionReader::Bool(std::string_view word, bool defaultValue) {
    return Convert(word, defaultValue, ParseFileBool,
                   [](bool value) { return std::string(value ? "True" : "False"); });
}

std::int16_t SectionReader::FloorInt(std::string_view word, std::int16_t defaultValue) {
    const auto parse = [](std::string_view text) -> std::optional<std::int16_t> {
        const auto value = ParseFileNumber(text);
        return value ? ToInt16(std::floor(*value)) : std::nullopt;
    };
    return Convert(word, defaultValue, parse, NumberToText);
}

int SectionReader::Count(std::string_view word) {
    return std::max<int>(0, Int(word, 0));
}

} // namespace zentrel
