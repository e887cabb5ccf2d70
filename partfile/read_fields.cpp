#include <array>
#include <utility>

#include "device/number_text.h"
#include "partfile/part_sections.h"

namespace zentrel {
namespace {

using TextKey = std::pair<std::string_view, std::string FieldEntry::*>;
using RealKey = std::pair<std::string_view, double FieldEntry::*>;
using BoolKey = std::pair<std::string_view, bool FieldEntry::*>;

constexpr std::array<RealKey, 4> kRealKeys{{
    {"MINIMUMVALUE", &FieldEntry::minimumValue},
    {"MAXIMUMVALUE", &FieldEntry::maximumValue},
    {"ZEROVALUE", &FieldEntry::zeroValue},
    {"STEPVALUE", &FieldEntry::stepValue},
}};

constexpr std::array<TextKey, 9> kTextKeys{{
    {"UNITS", &FieldEntry::units},
    {"LINKEDBITS", &FieldEntry::linkedBits},
    {"MIRRORBITS", &FieldEntry::mirrorBits},
    {"STEPVALUEBITNAME", &FieldEntry::stepValueBitName},
    {"script_name", &FieldEntry::scriptName},
    {"script_on_load", &FieldEntry::scriptOnLoad},
    {"script_before_prog", &FieldEntry::scriptBeforeProg},
    {"script_after_prog", &FieldEntry::scriptAfterProg},
    {"GREATERBITS", &FieldEntry::greaterBits},
}};

constexpr std::array<BoolKey, 4> kBoolKeys{{
    {"GREATERTHAN", &FieldEntry::greaterThan},
    {"POLARITY", &FieldEntry::polarity},
    {"POLARITYINVERTED", &FieldEntry::polarityInverted},
    {"DATAINVERTED", &FieldEntry::dataInverted},
}};

FieldControl ControlOf(std::string_view type) {
    if (type == "Bit") return FieldControl::kCheckBox;
    if (type == "Counter") return FieldControl::kSpinBox;
    if (type == "List") return FieldControl::kList;
    return FieldControl::kNone;
}

std::string Description(const FieldEntry& field, std::string_view what, std::string_view why) {
    constexpr std::string_view kBreak = "\n\r"; // this way round
    const int low = field.position;
    std::string text = "Register " + field.reg + '[';
    if (field.length == 1) {
        text += std::to_string(low) + ']';
    } else {
        text += std::to_string(low + field.length - 1) + ':' + std::to_string(low) +
                "]     Length: " + std::to_string(field.length);
    }
    text.append(kBreak).append(what);
    if (!what.empty() && !why.empty()) text.append(kBreak).append(kBreak);
    return text.append(why);
}

// "VAL0103": entry 3 of field 1.
std::string ListKey(std::string_view word, int field) {
    return std::string(word) + KeyNumber(field);
}

std::vector<std::string> ReadTexts(SectionReader& section, const std::string& word, int count) {
    std::vector<std::string> texts;
    for (int j = 0; j < count; ++j) {
        section.SetEntry(j);
        texts.push_back(section.Text(word, section.EntryText()));
    }
    return texts;
}

std::vector<double> ReadReals(SectionReader& section, const std::string& word, int count) {
    std::vector<double> values;
    for (int j = 0; j < count; ++j) {
        section.SetEntry(j);
        values.push_back(section.Real(word, j));
    }
    return values;
}

void ReadLists(PartReading& reading, SectionReader& section, FieldEntry& field) {
    const int count = reading.TakeListed(section, "COUNT", section.Count());
    if (count == 0) return;
    if (section.Text("FORMAT", "String") == "String") {
        field.strings = ReadTexts(section, ListKey("VAL", field.entry), count);
    } else {
        const int codes = reading.TakeListed(section, "COUNTB", section.Count("COUNTB"));
        field.values = ReadReals(section, ListKey("VAL", field.entry), count);
        field.strings = ReadTexts(section, ListKey("VALB", field.entry), codes);
    }
    section.SetEntry(field.entry);
}

void ReadRest(PartReading& reading, SectionReader& section, FieldEntry& field) {
    field.position = section.Int("POS", 1);
    field.length = section.Int("LEN", 1);
    field.display = section.Bool("DISPLAY", false);
    field.frame = section.Text("FRAME", "Frame");
    ReadLists(reading, section, field);
    for (const auto& [word, member] : kRealKeys) {
        field.*member = section.Real(word, field.*member);
    }
    for (const auto& [word, member] : kTextKeys)
        field.*member = section.Text(word);
    for (const auto& [word, member] : kBoolKeys) {
        field.*member = section.Bool(word, field.*member);
    }
    field.polarityPosition = section.Int("POLARITYPOSITION", 0);
    field.description =
        Description(field, section.Text("DESCRIPTION"), section.Text("DESCRIPTIONWHY"));
}

} // namespace

void ReadFields(PartReading& reading) {
    SectionReader section = reading.Section("BITS");
    EntryNames names("BITS", reading.part);
    const int count = section.Count();
    reading.part.fieldCount = count;
    for (int i = 0; i < count; ++i) {
        section.SetEntry(i);
        FieldEntry field;
        field.entry = i;
        field.reg = section.Text("REG");
        field.name = section.Text("NAME", "Reg" + section.EntryText());
        field.control = ControlOf(section.Text("TYPE", "Bits"));
        field.repeatsName = names.Repeats(field.name, i);
        if (field.repeatsName && field.control == FieldControl::kSpinBox) {
            names.LeaveOut(section, field.name, i);
            continue;
        }
        ReadRest(reading, section, field);
        reading.part.fields.push_back(std::move(field));
    }
}

} // namespace zentrel
