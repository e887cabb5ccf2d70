#include "screens/field_tip.h"

#include "device/bit_string.h"
#include "device/errors.h"
#include "device/number_text.h"
#include "device/part.h"
#include "device/text.h"

namespace zentrel {

namespace {

constexpr std::size_t kLongestDescription = 1000;

std::string BitsOf(const cPrgmBits& field) {
    if (field.Position < 0 || field.Length < 1) return "no bits";
    const int top = field.Position + field.Length - 1;
    if (field.Length == 1) return "bit " + std::to_string(field.Position);
    return "bits " + std::to_string(top) + " to " + std::to_string(field.Position);
}

std::string LimitsOf(const cPrgmBits& field) {
    std::string limits;
    if (field.MinimumValue > 0) limits += "from " + NumberToText(field.MinimumValue);
    if (field.MaximumValue > 0)
        limits += (limits.empty() ? "" : " ") + ("up to " + NumberToText(field.MaximumValue));
    return limits;
}

std::string NowOf(const cPrgmBits& field) {
    try {
        return field.Text();
    } catch (const OutOfRange&) {
        return NumberToText(field.BitValue()) + ", which its list doesn't have";
    }
}

/// The beginning of a long text, cut between two characters.
std::string Beginning(const std::string& text, std::size_t length) {
    if (text.size() <= length) return text;
    const auto inside = [&] { return (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U; };
    while (length > 0 && inside())
        --length;
    return text.substr(0, length) + " ...";
}

std::string Describe(const cPrgmBits& field) {
    std::string tip = field.ID + "\n" + field.Register + ", " + BitsOf(field);
    if (!field.LinkedBits.empty()) tip += ", continued in " + field.LinkedBits;
    tip += "\nNow " + NowOf(field);
    if (const std::string limits = LimitsOf(field); !limits.empty()) tip += "\nLimits: " + limits;
    if (field.Description.empty()) return tip;
    return tip + "\n" + Beginning(field.Description, kLongestDescription);
}

} // namespace

std::string FieldTip(const cPart& part, std::string_view field) {
    try {
        return Describe(part.PrgmBits(field));
    } catch (const Error&) {
        return {};
    }
}

std::string BitTip(const cPart& part, std::string_view reg, int bit) {
    constexpr int kMostFields = 3; // A bit seldom has more than one.
    std::string tip = std::string(reg) + ", bit " + std::to_string(bit);
    if (bit < part.ControlLength) tip += "\nControl bit: part of the register's address";
    int fields = 0;
    for (const cPrgmBits& field : part.PrgmBits) {
        const bool holds = field.Position >= 0 && field.Position <= bit &&
                           bit < field.Position + field.Length && EqualNoCase(field.Register, reg);
        if (holds && ++fields <= kMostFields) tip += "\n\n" + FieldTip(part, field.ID);
    }
    return tip;
}

std::string RegisterTip(const cPart& part, std::string_view name) {
    try {
        const cRegister& reg = part.Registers(name);
        std::int16_t digits = 1;
        return reg.ID() + "\n0x" + FormatHexGrouped(reg.word(), digits, 4) +
               (reg.changed() ? "\nNot sent yet" : "\nSent");
    } catch (const Error&) {
        return {};
    }
}

std::string FrequencyTip(std::string_view name, std::string_view value, std::string_view unit,
                         const Label& limits) {
    std::string tip(name);
    tip.append("\nNow ").append(value).append(" ").append(unit);
    if (limits.Caption.empty() && limits.Tag.empty()) return tip;
    tip += "\nLimits:";
    if (!limits.Caption.empty()) tip += " from " + limits.Caption;
    if (!limits.Tag.empty()) tip += " up to " + limits.Tag;
    return tip.append(" ").append(unit);
}

} // namespace zentrel
