#include "automation/vbscript/builtin_arguments.h"
#include "automation/vbscript/calendar.h"
#include "automation/vbscript/runtime.h"
#include "automation/vbscript/text.h"

#include <cmath>

namespace zentrel::vbscript {
namespace {

constexpr std::int64_t kDay = 86400;
constexpr int kSunday = 1;

bool IsNullAt(const BuiltinCall& call, std::size_t index) {
    return Plain(call[index]).IsNull();
}

Value Now(BuiltinCall& call) {
    // Whole seconds, as a clock shows them.
    const double now = LinearFromSerial(call.runtime.Now());
    return Value::Date(SerialFromLinear(std::floor(now * kDay + 0.0001) / kDay));
}
Value Today(BuiltinCall& call) {
    return Value::Date(std::trunc(call.runtime.Now()));
}
Value TimeOfDay(BuiltinCall& call) {
    const double now = call.runtime.Now();
    return Value::Date(std::floor((now - std::floor(now)) * kDay + 0.0001) / kDay);
}
Value Timer(BuiltinCall& call) {
    const double now = call.runtime.Now();
    return Value::Single(static_cast<float>((now - std::floor(now)) * kDay));
}

template<int DateParts::*Field>
Value PartOf(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    return Value::Integer(SplitDate(ToDate(call[0])).*Field);
}

/// vbUseSystem (0) means Sunday here.
int FirstDay(const BuiltinCall& call, std::size_t index) {
    if (!call.Has(index)) return kSunday;
    const int day = Number(call, index, 0, 7);
    return day == 0 ? kSunday : day;
}

int WeekdayFrom(std::int64_t day, int first) {
    return (WeekdayOf(day) - first + 7) % 7 + 1;
}

std::int64_t DayOf(double serial) {
    return static_cast<std::int64_t>(std::floor(LinearFromSerial(serial)));
}

Value Weekday(BuiltinCall& call) {
    if (IsNullAt(call, 0)) return Value::Null();
    return Value::Integer(WeekdayFrom(DayOf(ToDate(call[0])), FirstDay(call, 1)));
}

Value NameFrom(std::string_view name, bool shortened) {
    return Value::Utf8(shortened ? name.substr(0, 3) : name);
}

Value MonthName(BuiltinCall& call) {
    const int month = Number(call, 0, 1, 12);
    return NameFrom(kMonthNames[month - 1], call.Has(1) && ToBoolean(call[1]));
}

Value WeekdayName(BuiltinCall& call) {
    const int day = Number(call, 0, 1, 7);
    const int first = FirstDay(call, 2);
    return NameFrom(kWeekdayNames[(day + first - 2) % 7], call.Has(1) && ToBoolean(call[1]));
}

Value DateSerial(BuiltinCall& call) {
    const auto year = FullYear(ToInteger(call[0]));
    return Value::Date(JoinDate(year, ToInteger(call[1]), ToInteger(call[2]), 0));
}

Value TimeSerial(BuiltinCall& call) {
    const std::int64_t seconds = ToInteger(call[0]) * std::int64_t{3600} +
                                 ToInteger(call[1]) * std::int64_t{60} + ToInteger(call[2]);
    return Value::Date(SerialFromLinear(static_cast<double>(seconds) / kDay));
}

Value DateValue(BuiltinCall& call) {
    if (IsNullAt(call, 0)) Raise(ErrorNumber::InvalidNull);
    return Value::Date(std::trunc(ToDate(call[0])));
}

Value TimeValue(BuiltinCall& call) {
    const double serial = ToDate(call[0]);
    return Value::Date(std::fabs(serial - std::trunc(serial)));
}

// --- intervals ---

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Interval IntervalAt(const BuiltinCall& call, std::size_t index) {
    constexpr std::u16string_view kNames[] = {u"yyyy", u"q",  u"m", u"y", u"d",
                                              u"w",    u"ww", u"h", u"n", u"s"};
    const auto text = Text(call, index);
    for (std::size_t i = 0; i < std::size(kNames); ++i)
        if (CompareText(text.AsText(), kNames[i], true) == 0) return static_cast<Interval>(i);
    Raise(ErrorNumber::InvalidCall);
}

std::int64_t SecondsOf(double serial) {
    return std::llround(LinearFromSerial(serial) * static_cast<double>(kDay));
}

std::int64_t FloorDivide(std::int64_t a, std::int64_t b) {
    return a / b - (a % b != 0 && (a < 0) != (b < 0));
}

/// Months later, on the month's last day where the day doesn't exist.
double AddMonths(double serial, std::int64_t months) {
    const auto parts = SplitDate(serial);
    const auto total = parts.year * std::int64_t{12} + parts.month - 1 + months;
    const auto year = FloorDivide(total, 12);
    const auto month = static_cast<int>(total - year * 12) + 1;
    if (year < 100 || year > 9999) Raise(ErrorNumber::InvalidCall);
    const int day = std::min(parts.day, DaysInMonth(static_cast<int>(year), month));
    return JoinDate(year, month, day,
                    parts.hour * std::int64_t{3600} + parts.minute * std::int64_t{60} +
                        parts.second);
}

double AddSeconds(double serial, double seconds) {
    const double linear = static_cast<double>(SecondsOf(serial)) + seconds;
    const double result = SerialFromLinear(linear / static_cast<double>(kDay));
    if (!IsDateInRange(result)) Raise(ErrorNumber::InvalidCall);
    return result;
}

Value DateAdd(BuiltinCall& call) {
    const auto interval = IntervalAt(call, 0);
    if (IsNullAt(call, 2)) return Value::Null();
    const std::int64_t count = ToLong(call[1]);
    const double serial = ToDate(call[2]);
    const auto seconds = [&](double each) {
        return Value::Date(AddSeconds(serial, static_cast<double>(count) * each));
    };
    switch (interval) {
    case Interval::Year:
        return Value::Date(AddMonths(serial, count * 12));
    case Interval::Quarter:
        return Value::Date(AddMonths(serial, count * 3));
    case Interval::Month:
        return Value::Date(AddMonths(serial, count));
    case Interval::Week:
        return seconds(7 * kDay);
    case Interval::Hour:
        return seconds(3600);
    case Interval::Minute:
        return seconds(60);
    case Interval::Second:
        return seconds(1);
    default:
        return seconds(kDay);
    }
}

/// How many boundaries of the interval lie between two dates.
Value DateDiff(BuiltinCall& call) {
    const auto interval = IntervalAt(call, 0);
    if (IsNullAt(call, 1) || IsNullAt(call, 2)) return Value::Null();
    const double from = ToDate(call[1]);
    const double to = ToDate(call[2]);
    const int first = FirstDay(call, 3);
    const auto a = SplitDate(from);
    const auto b = SplitDate(to);
    const auto units = [&](std::int64_t seconds) {
        return FloorDivide(SecondsOf(to), seconds) - FloorDivide(SecondsOf(from), seconds);
    };
    const auto days = DayOf(to) - DayOf(from);
    std::int64_t count = 0;
    switch (interval) {
    case Interval::Year:
        count = b.year - a.year;
        break;
    case Interval::Quarter:
        count = (b.year - a.year) * 4 + (b.month - 1) / 3 - (a.month - 1) / 3;
        break;
    case Interval::Month:
        count = (b.year - a.year) * 12 + b.month - a.month;
        break;
    case Interval::Weekday:
        count = days / 7;
        break;
    case Interval::Week: {
        const auto week_start = [&](double serial) {
            return DayOf(serial) - WeekdayFrom(DayOf(serial), first) + 1;
        };
        count = (week_start(to) - week_start(from)) / 7;
        break;
    }
    case Interval::Hour:
        count = units(3600);
        break;
    case Interval::Minute:
        count = units(60);
        break;
    case Interval::Second:
        count = units(1);
        break;
    default:
        count = days;
    }
    if (count > 2147483647 || count < -2147483648LL) Raise(ErrorNumber::Overflow);
    return Value::Long(count);
}

enum FirstWeek { kFirstJan1 = 1, kFirstFourDays = 2, kFirstFullWeek = 3 };

/// The day that a year's first week begins on.
std::int64_t FirstWeekStart(int year, int first_day, int first_week) {
    const auto january = DayNumber(year, 1, 1);
    const int offset = WeekdayFrom(january, first_day) - 1;
    const bool counts =
        first_week == kFirstJan1 || (first_week == kFirstFourDays && offset <= 3) || offset == 0;
    return counts ? january - offset : january + 7 - offset;
}

int WeekOfYear(std::int64_t day, int year, int first_day, int first_week) {
    if (first_week != kFirstJan1 && day >= FirstWeekStart(year + 1, first_day, first_week))
        return 1;
    auto start = FirstWeekStart(year, first_day, first_week);
    if (day < start) start = FirstWeekStart(year - 1, first_day, first_week);
    return static_cast<int>((day - start) / 7) + 1;
}

Value DatePart(BuiltinCall& call) {
    const auto interval = IntervalAt(call, 0);
    if (IsNullAt(call, 1)) return Value::Null();
    const double serial = ToDate(call[1]);
    const int first = FirstDay(call, 2);
    const int first_week = call.Has(3) ? std::max(Number(call, 3, 0, 3), std::int32_t{1}) : 1;
    const auto p = SplitDate(serial);
    const auto day = DayNumber(p.year, p.month, p.day);
    switch (interval) {
    case Interval::Year:
        return Value::Integer(p.year);
    case Interval::Quarter:
        return Value::Integer((p.month - 1) / 3 + 1);
    case Interval::Month:
        return Value::Integer(p.month);
    case Interval::DayOfYear:
        return Value::Integer(day - DayNumber(p.year, 1, 1) + 1);
    case Interval::Day:
        return Value::Integer(p.day);
    case Interval::Weekday:
        return Value::Integer(WeekdayFrom(day, first));
    case Interval::Week:
        return Value::Integer(WeekOfYear(day, p.year, first, first_week));
    case Interval::Hour:
        return Value::Integer(p.hour);
    case Interval::Minute:
        return Value::Integer(p.minute);
    default:
        return Value::Integer(p.second);
    }
}

constexpr Builtin kFunctions[] = {
    {"Date", 0, 0, Today},
    {"DateAdd", 3, 3, DateAdd},
    {"DateDiff", 3, 5, DateDiff},
    {"DatePart", 2, 4, DatePart},
    {"DateSerial", 3, 3, DateSerial},
    {"DateValue", 1, 1, DateValue},
    {"Day", 1, 1, PartOf<&DateParts::day>},
    {"Hour", 1, 1, PartOf<&DateParts::hour>},
    {"Minute", 1, 1, PartOf<&DateParts::minute>},
    {"Month", 1, 1, PartOf<&DateParts::month>},
    {"MonthName", 1, 2, MonthName},
    {"Now", 0, 0, Now},
    {"Second", 1, 1, PartOf<&DateParts::second>},
    {"Time", 0, 0, TimeOfDay},
    {"Timer", 0, 0, Timer},
    {"TimeSerial", 3, 3, TimeSerial},
    {"TimeValue", 1, 1, TimeValue},
    {"Weekday", 1, 2, Weekday},
    {"WeekdayName", 1, 3, WeekdayName},
    {"Year", 1, 1, PartOf<&DateParts::year>},
};

} // namespace

std::span<const Builtin> DateFunctions() {
    return kFunctions;
}

} // namespace zentrel::vbscript
