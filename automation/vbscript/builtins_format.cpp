#include "automation/vbscript/builtin_arguments.h"
#include "automation/vbscript/calendar.h"
#include "automation/vbscript/text.h"

#include <charconv>
#include <cmath>
#include <string>

namespace zentrel::vbscript {
namespace {

constexpr int kDefaultDigits = 2;
constexpr int kSignificant = 15;

/// The choices that FormatNumber and its sisters share.
struct Layout {
    int digits;
    bool leading_zero;
    bool parentheses;
    bool grouped;
};

/// -1 yes, 0 no, -2 as the locale has it.
bool Choice(const BuiltinCall& call, std::size_t index, bool usual) {
    if (!call.Has(index)) return usual;
    const auto choice = Number(call, index, -2, 0);
    return choice == -2 ? usual : choice == -1;
}

Layout LayoutOf(const BuiltinCall& call, bool usual_parentheses) {
    auto digits = call.Has(1) ? Number(call, 1, -1, 99) : -1;
    if (digits < 0) digits = kDefaultDigits;
    return {digits, Choice(call, 2, true), Choice(call, 3, usual_parentheses),
            Choice(call, 4, true)};
}

/// A number's size as decimal digits around the point.
struct Decimal {
    std::string whole;
    std::string fraction;
};

Decimal Expand(double magnitude) {
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, magnitude,
                                   std::chars_format::scientific, kSignificant - 1)
                         .ptr;
    const std::string_view text(buffer, static_cast<std::size_t>(end - buffer));
    const auto e = text.find('e');
    int exponent = 0;
    const auto* first = text.data() + e + 1;
    std::from_chars(*first == '+' ? first + 1 : first, text.data() + text.size(), exponent);
    std::string figures;
    for (const char c : text.substr(0, e))
        if (c != '.') figures += c;
    if (exponent < 0)
        return {"0", std::string(static_cast<std::size_t>(-exponent - 1), '0') + figures};
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    if (figures.size() < whole) figures.append(whole - figures.size(), '0');
    return {figures.substr(0, whole), figures.substr(whole)};
}

/// Rounds halves up to so many digits behind the point.
void RoundTo(Decimal& number, std::size_t digits) {
    const bool up = number.fraction.size() > digits && number.fraction[digits] >= '5';
    number.fraction.resize(digits, '0');
    if (!up) return;
    auto all = number.whole + number.fraction;
    std::size_t i = all.size();
    while (i > 0 && all[i - 1] == '9')
        all[--i] = '0';
    if (i > 0)
        ++all[i - 1];
    else
        all.insert(all.begin(), '1');
    number.whole = all.substr(0, all.size() - digits);
    number.fraction = all.substr(all.size() - digits);
}

std::string Group(const std::string& whole) {
    std::string out;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % 3 == 0) out += ',';
        out += whole[i];
    }
    return out;
}

std::string Compose(double number, const Layout& layout, std::string_view prefix,
                    std::string_view suffix) {
    auto decimal = Expand(std::fabs(number));
    RoundTo(decimal, static_cast<std::size_t>(layout.digits));
    const bool zero =
        (decimal.whole + decimal.fraction).find_first_not_of('0') == std::string::npos;
    if (decimal.whole == "0" && !layout.leading_zero && layout.digits > 0)
        decimal.whole.clear();
    else if (layout.grouped)
        decimal.whole = Group(decimal.whole);
    std::string text(prefix);
    text += decimal.whole;
    if (layout.digits > 0) text += "." + decimal.fraction;
    text += suffix;
    if (number >= 0 || zero) return text;
    std::string negative(layout.parentheses ? "(" : "-");
    negative += text;
    if (layout.parentheses) negative += ')';
    return negative;
}

double NumberAt(const BuiltinCall& call) {
    const auto plain = Plain(call[0]);
    if (plain.IsNull()) Raise(ErrorNumber::TypeMismatch);
    return ToDouble(plain);
}

Value FormatNumber(BuiltinCall& call) {
    return Value::Utf8(Compose(NumberAt(call), LayoutOf(call, false), "", ""));
}

Value FormatCurrency(BuiltinCall& call) {
    return Value::Utf8(Compose(NumberAt(call), LayoutOf(call, true), "$", ""));
}

Value FormatPercent(BuiltinCall& call) {
    const double percent = NumberAt(call) * 100;
    if (std::isinf(percent)) Raise(ErrorNumber::Overflow);
    return Value::Utf8(Compose(percent, LayoutOf(call, false), "", "%"));
}

/// FormatDateTime(date[, vbGeneralDate to vbShortTime])
Value FormatDateTime(BuiltinCall& call) {
    const auto form = call.Has(1) ? Number(call, 1, 0, 4) : 0;
    const double serial = ToDate(call[0]);
    const auto parts = SplitDate(serial);
    switch (form) {
    case 1: {
        const auto day = DayNumber(parts.year, parts.month, parts.day);
        return Value::Utf8(std::string(kWeekdayNames[WeekdayOf(day) - 1]) + ", " +
                           std::string(kMonthNames[parts.month - 1]) + " " +
                           std::to_string(parts.day) + ", " + std::to_string(parts.year));
    }
    case 2:
        return Value::String(ShortDateText(parts));
    case 3:
        return Value::String(LongTimeText(parts));
    case 4: {
        const auto two = [](int n) { return std::to_string(100 + n).substr(1); };
        return Value::Utf8(two(parts.hour) + ":" + two(parts.minute));
    }
    default:
        return Value::String(DateText(serial));
    }
}

constexpr Builtin kFunctions[] = {
    {"FormatCurrency", 1, 5, FormatCurrency},
    {"FormatDateTime", 1, 2, FormatDateTime},
    {"FormatNumber", 1, 5, FormatNumber},
    {"FormatPercent", 1, 5, FormatPercent},
};

} // namespace

std::span<const Builtin> FormatFunctions() {
    return kFunctions;
}

} // namespace zentrel::vbscript
