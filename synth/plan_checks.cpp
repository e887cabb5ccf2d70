#include "synth/plan_checks.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "device/number_text.h"
#include "device/part.h"
#include "synth/pll.h"

namespace zentrel {
namespace {

void Mark(PllPanel& panel, std::string_view name, Element& element, Color color, std::string text) {
    element.BackColor = color;
    panel.faults.push_back({std::string(name), color, std::move(text)});
}

struct Range {
    std::string_view quantity; // "VCO frequency"
    std::string_view unit;
    std::string_view box;
};

void CheckRange(PllPanel& panel, TextBox& box, const Label& limits, const Range& range) {
    box.BackColor = colors::kWhite;
    const auto value = ParseNumber(box.Text);
    if (!value) return;
    const auto inUnit = [&](double number) {
        return NumberToText(number) + " " + std::string(range.unit);
    };
    const auto tell = [&](double by, std::string_view side, double limit) {
        Mark(panel, range.box, box, colors::kRed,
             std::string(range.quantity) + " " + inUnit(*value) + " is " + inUnit(by) + " " +
                 std::string(side) + " " + inUnit(limit));
    };
    const auto least = ParseFileNumber(limits.Caption);
    const auto most = ParseFileNumber(limits.Tag);
    if (least && *least > *value) tell(*least - *value, "below the least,", *least);
    if (most && *most < *value) tell(*value - *most, "above the most,", *most);
}

// N as the rules take it: the nearest 32-bit integer to what the box shows.
std::optional<std::int64_t> ShownN(const PllPanel& panel) {
    const auto number = ParseNumber(panel.txtNCounter.Text);
    if (!number) return {};
    const auto n = ToInt32(*number);
    return n ? std::optional<std::int64_t>(*n) : std::nullopt;
}

std::optional<std::int64_t> Modulus(const PllPanel& panel) {
    const auto number = ParseNumber(panel.lblNPrescale.Caption);
    const auto modulus = number ? ToInt32(*number) : std::nullopt;
    return modulus && *modulus != 0 ? std::optional<std::int64_t>(*modulus) : std::nullopt;
}

std::int64_t Quotient(std::int64_t dividend, std::int64_t divisor) {
    return static_cast<std::int64_t>(
        RoundHalfEven(static_cast<double>(dividend) / static_cast<double>(divisor)));
}

// By how much N breaks a rule; 0 when it keeps it. `p` is the prescaler's modulus.
struct NRule {
    std::string_view type;
    std::int64_t (*lacks)(std::int64_t n, std::int64_t p, std::int64_t margin);
    std::string_view what; // in words, ahead of the amount
};

std::int64_t LacksSingle(std::int64_t n, std::int64_t p, std::int64_t /*margin*/) {
    return std::abs(n % p);
}

std::int64_t LacksDual(std::int64_t n, std::int64_t p, std::int64_t margin) {
    const std::int64_t swallowed = n % p;
    const std::int64_t main = Quotient(n - swallowed, p);
    return std::max<std::int64_t>(0, swallowed + margin - main);
}

std::int64_t LacksQuad(std::int64_t n, std::int64_t p, std::int64_t margin) {
    const std::int64_t a = n % 4;
    const std::int64_t main = Quotient(n, p);
    const std::int64_t swallowed = std::max(a, Quotient(n - a - p * main, 4));
    return std::max<std::int64_t>(0, swallowed + margin - main);
}

constexpr NRule kRules[] = {
    {"SINGLE", LacksSingle, "is no multiple of it, too large by "},
    {"DUAL", LacksDual, "leaves the main counter too small by "},
    {"QUAD", LacksQuad, "leaves the main counter too small by "},
};

// "100", or "23-24"; a single number has no upper end.
struct NRange {
    std::int64_t low = 0;
    std::int64_t high = -1;
};

std::optional<NRange> ParseNRange(std::string_view text) {
    const auto number = [](std::string_view part) -> std::optional<std::int64_t> {
        const auto value = ParseFileNumber(part);
        const auto integer = value ? ToInt32(*value) : std::nullopt;
        return integer ? std::optional<std::int64_t>(*integer) : std::nullopt;
    };
    const auto joint = text.find('-', 1);
    const auto low = number(text.substr(0, joint));
    if (!low) return {};
    if (joint == std::string_view::npos) return NRange{*low, -1};
    const auto high = number(text.substr(joint + 1));
    return high ? std::optional(NRange{*low, *high}) : std::nullopt;
}

bool PrescalerBitSet(const cPart& part, const PllPanel& panel) {
    const std::string& field = panel.lblNPrescale.Tag;
    return !field.empty() && part.PrgmBits(field).BitValue() == 1;
}

} // namespace

void CheckVCORange(cPLL& pll) {
    CheckRange(pll.panel, pll.panel.txtVCO, pll.panel.lblVCO_Range,
               {"VCO frequency", "MHz", "txtVCO"});
}

void CheckCrystalRange(cPLL& pll) {
    CheckRange(pll.panel, pll.panel.txtOsc, pll.panel.lblOSC_Range,
               {"Reference frequency", "MHz", "txtOsc"});
}

void CheckComparisonRange(cPLL& pll) {
    CheckRange(pll.panel, pll.panel.txtFpd, pll.panel.lblFpd_Range,
               {"Comparison frequency", "kHz", "txtFpd"});
}

void CheckPrescaler(const cPart& part, cPLL& pll) {
    PllPanel& panel = pll.panel;
    Shape& box = panel.shpPLL[pll_diagram::kPrescalerBox];
    box.BackColor = colors::kWhite;
    const auto middle = ParseFileNumber(panel.lblNCheck1.Tag);
    const auto vco = ParseNumber(panel.txtVCO.Text);
    const std::string& field = panel.lblNPrescale.Tag;
    if (!middle || !vco || field.empty() || *vco <= std::abs(*middle)) return;
    const double bit = part.PrgmBits(field).BitValue();
    if ((*middle > 0 && bit == 0) || (*middle < 0 && bit == 1)) {
        const double limit = std::abs(*middle);
        Mark(panel, "shpPLL", box, colors::kRed,
             "VCO frequency is " + NumberToText(*vco - limit) + " MHz above " +
                 NumberToText(limit) + " MHz, where prescaler setting " + NumberToText(bit) +
                 " ends");
    }
}

void CheckNRule(cPLL& pll) {
    PllPanel& panel = pll.panel;
    TextBox& box = panel.txtNCounter;
    box.BackColor = colors::kWhite;
    std::string_view type = panel.lblNCheck1.Caption;
    std::int64_t margin = 0;
    if (!type.empty() && IsDigit(type.back())) {
        margin = type.back() - '0';
        type.remove_suffix(1);
    }
    const auto* rule = std::find_if(std::begin(kRules), std::end(kRules),
                                    [&](const NRule& candidate) { return candidate.type == type; });
    const auto n = ShownN(panel);
    const auto p = Modulus(panel);
    if (rule == std::end(kRules) || !n || !p) return;
    const std::int64_t lacks = rule->lacks(*n, *p, margin);
    if (lacks == 0) return;
    Mark(panel, "txtNCounter", box, colors::kRed,
         "N " + std::to_string(*n) + " with prescaler " + std::to_string(*p) + " " +
             std::string(rule->what) + std::to_string(lacks));
}

void CheckNRange(const cPart& part, cPLL& pll) {
    PllPanel& panel = pll.panel;
    const Label& ranges = panel.lblNCheck2;
    if (ranges.Caption.empty() && ranges.Tag.empty()) return;
    const std::string& text = PrescalerBitSet(part, panel) ? ranges.Tag : ranges.Caption;
    const auto range = text.empty() ? std::nullopt : ParseNRange(text);
    const auto n = ShownN(panel);
    if (!range || !n) return;
    const std::string shown = "N " + std::to_string(*n);
    if (*n < range->low) {
        Mark(panel, "txtNCounter", panel.txtNCounter, colors::kRed,
             shown + " is " + std::to_string(range->low - *n) + " below the least, " +
                 std::to_string(range->low));
    } else if (*n <= range->high) {
        Mark(panel, "txtNCounter", panel.txtNCounter, colors::kYellow,
             shown + " lies within " + std::to_string(range->low) + " to " +
                 std::to_string(range->high) + ", where not every N can be made");
    }
}

} // namespace zentrel
