#include "automation/vbscript/calendar.h"

#include "automation/vbscript/errors.h"
#include "automation/vbscript/text.h"

#include <cmath>

namespace zentrel::vbscript {
namespace {

constexpr double kFirstDay = -657434;   // 1 January 100
constexpr double kBehindLast = 2958466; // 1 January 10000
constexpr std::int64_t kSecondsPerDay = 86400;

/// Days of the civil calendar counted from 1 March of year 0, so that the leap day ends a year.
std::int64_t CivilDays(std::int64_t year, std::int64_t month, std::int64_t day) {
    year -= month <= 2;
    const auto era = (year >= 0 ? year : year - 399) / 400;
    const auto year_of_era = year - era * 400;
    const auto day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + year_of_era * 365 + year_of_era / 4 - year_of_era / 100 + day_of_year;
}

constexpr std::int64_t kEpochShift = 693899; // CivilDays(1899, 12, 30)

std::u16string TwoDigits(int number) {
    return Widen(std::to_string(100 + number).substr(1));
}

} // namespace

const std::string_view kMonthNames[12] = {"January",   "February", "March",    "April",
                                          "May",       "June",     "July",     "August",
                                          "September", "October",  "November", "December"};
const std::string_view kWeekdayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                           "Thursday", "Friday", "Saturday"};

std::int64_t DayNumber(std::int64_t year, std::int64_t month, std::int64_t day) {
    const auto months = year * 12 + month - 1;
    const auto whole = (months >= 0 ? months : months - 11) / 12;
    return CivilDays(whole, months - whole * 12 + 1, 1) + day - 1 - kEpochShift;
}

int DaysInMonth(int year, int month) {
    return static_cast<int>(DayNumber(year, month + 1, 1) - DayNumber(year, month, 1));
}

int WeekdayOf(std::int64_t day_number) {
    return static_cast<int>(((day_number + 6) % 7 + 7) % 7) + 1; // day 0 was a Saturday
}

bool IsDateInRange(double serial) {
    return serial > kFirstDay - 1 && serial < kBehindLast;
}

double LinearFromSerial(double serial) {
    const double day = std::trunc(serial);
    return day + std::fabs(serial - day);
}

double SerialFromLinear(double linear) {
    const double day = std::floor(linear);
    const double time = linear - day;
    return day < 0 ? day - time : day + time;
}

DateParts SplitDate(double serial) {
    auto day = static_cast<std::int64_t>(std::trunc(serial));
    const double fraction = std::fabs(serial - std::trunc(serial));
    auto second = static_cast<std::int64_t>(std::llround(fraction * kSecondsPerDay));
    if (second >= kSecondsPerDay) {
        second -= kSecondsPerDay;
        ++day;
    }
    DateParts parts;
    const auto shifted = day + kEpochShift;
    const auto era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
    const auto day_of_era = shifted - era * 146097;
    const auto year_of_era =
        (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
    const auto day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
    const auto month = (5 * day_of_year + 2) / 153;
    parts.day = static_cast<int>(day_of_year - (153 * month + 2) / 5 + 1);
    parts.month = static_cast<int>(month < 10 ? month + 3 : month - 9);
    parts.year = static_cast<int>(year_of_era + era * 400 + (parts.month <= 2));
    parts.hour = static_cast<int>(second / 3600);
    parts.minute = static_cast<int>(second / 60 % 60);
    parts.second = static_cast<int>(second % 60);
    return parts;
}

double JoinDate(std::int64_t year, std::int64_t month, std::int64_t day,
                std::int64_t second_of_day) {
    const double linear = static_cast<double>(DayNumber(year, month, day)) +
                          static_cast<double>(second_of_day) / static_cast<double>(kSecondsPerDay);
    const double serial = SerialFromLinear(linear);
    if (!IsDateInRange(serial)) Raise(ErrorNumber::InvalidCall);
    return serial;
}

int FullYear(int year) {
    if (year < 0 || year > 99) return year;
    return year < 50 ? year + 2000 : year + 1900;
}

std::u16string ShortDateText(const DateParts& p) {
    return Widen(std::to_string(p.month) + "/" + std::to_string(p.day) + "/" +
                 std::to_string(p.year));
}

std::u16string LongTimeText(const DateParts& p) {
    const int hour = p.hour % 12 == 0 ? 12 : p.hour % 12;
    return Widen(std::to_string(hour)) + u":" + TwoDigits(p.minute) + u":" + TwoDigits(p.second) +
           (p.hour < 12 ? u" AM" : u" PM");
}

std::u16string DateText(double serial) {
    const auto parts = SplitDate(serial);
    const bool time = parts.hour != 0 || parts.minute != 0 || parts.second != 0;
    const bool date = parts.year != 1899 || parts.month != 12 || parts.day != 30;
    if (date && time) return ShortDateText(parts) + u" " + LongTimeText(parts);
    return date ? ShortDateText(parts) : LongTimeText(parts);
}

} // namespace zentrel::vbscript
