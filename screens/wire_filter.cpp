#include "screens/wire_filter.h"

#include <algorithm>

#include "device/text.h"
#include "transport/monitor/wire_text.h"

namespace zentrel {
namespace {

bool Contains(std::string_view text, std::string_view part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(),
                       [](char a, char b) { return AsciiLower(a) == AsciiLower(b); }) != text.end();
}

bool HexBegins(const WireRecord& record, std::string_view digits) {
    std::string hex = WireHex(record);
    std::erase(hex, ' ');
    return hex.size() >= digits.size() &&
           EqualNoCase(std::string_view(hex).substr(0, digits.size()), digits);
}

bool AnyNamed(const WireMap& map, std::string_view name) {
    const auto is = [&](const auto& item) { return EqualNoCase(item.name, name); };
    return std::any_of(map.registers.begin(), map.registers.end(),
                       [&](const std::string& reg) { return EqualNoCase(reg, name); }) ||
           std::any_of(map.fields.begin(), map.fields.end(), is) ||
           std::any_of(map.pins.begin(), map.pins.end(), is);
}

} // namespace

WireFilter::WireFilter(std::string_view text) {
    while (!(text = TrimBlanks(text)).empty()) {
        const auto end = std::min(text.find_first_of(" \t"), text.size());
        terms_.push_back({std::string(text.substr(0, end)), {}});
        text.remove_prefix(end);
    }
}

bool WireFilter::Takes(const WireRecord& record) {
    return std::all_of(terms_.begin(), terms_.end(),
                       [&](Term& term) { return Answers(term, record); });
}

const WireFilter::Meaning& WireFilter::MeaningFor(Term& term, const WireRecord& record) {
    for (const Meaning& meaning : term.meanings) {
        if (meaning.map == record.map) return meaning;
    }
    const WireMap& map = *record.map;
    const bool whole = AnyNamed(map, term.text);
    const auto meant = [&](std::string_view name) {
        return whole ? EqualNoCase(name, term.text) : Contains(name, term.text);
    };
    Meaning meaning{record.map, std::vector<bool>(map.registers.size()), 0, whole};
    for (std::size_t i = 0; i < map.registers.size(); ++i)
        meaning.registers[i] = meant(map.registers[i]);
    for (const WireMap::Field& field : map.fields) {
        if (field.reg > 0 && meant(field.name))
            meaning.registers[static_cast<std::size_t>(field.reg - 1)] = true;
    }
    for (const WireMap::Pin& pin : map.pins) {
        if (!pin.readBack && meant(pin.name)) meaning.pins |= pin.mask;
    }
    term.meanings.push_back(std::move(meaning));
    return term.meanings.back();
}

bool WireFilter::Answers(Term& term, const WireRecord& record) {
    const std::string_view text = term.text;
    if (EqualNoCase(text, "usb") || EqualNoCase(text, "lpt"))
        return EqualNoCase(text, WireRouteText(record));
    if (text.size() > 2 && EqualNoCase(text.substr(0, 2), "0x"))
        return HexBegins(record, text.substr(2));
    const Meaning& meaning = MeaningFor(term, record);
    const auto reg = static_cast<std::size_t>(record.reg);
    if (reg > 0 && reg <= meaning.registers.size() && meaning.registers[reg - 1]) return true;
    if (((record.changedPins | record.pulsedPins) & meaning.pins) != 0) return true;
    if (meaning.whole) return false;
    if (record.kind != WireKind::Word && Contains(WireName(record), text)) return true;
    // A word that went well has no remark worth a search in every row.
    return WireFailed(record) && Contains(WireRemark(record), text);
}

} // namespace zentrel
