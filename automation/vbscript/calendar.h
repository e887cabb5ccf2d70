#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zentrel::vbscript {

/// A Date taken apart. Years 100 to 9999.
struct DateParts {
    int year = 1899;
    int month = 12;
    int day = 30;
    int hour = 0;
    int minute = 0;
    int second = 0;
};

/// Days since 30 December 1899 in the Gregorian calendar; month may lie outside of 1 to 12.
std::int64_t DayNumber(std::int64_t year, std::int64_t month, std::int64_t day);
int DaysInMonth(int year, int month);
/// 1 is Sunday.
int WeekdayOf(std::int64_t day_number);

/// The smallest and largest serial: 1 January 100 and 31 December 9999.
bool IsDateInRange(double serial);

/// A serial's fraction counts forward from its day on both sides of zero (-1.25 is 6 o'clock on
/// day -1). A linear time is what it would be if time simply went on; only there can be added.
double LinearFromSerial(double serial);
double SerialFromLinear(double linear);

DateParts SplitDate(double serial);
/// Error 5 outside of the range.
double JoinDate(std::int64_t year, std::int64_t month, std::int64_t day,
                std::int64_t second_of_day);

/// Years 0 to 49 belong to 2000, 50 to 99 to 1900.
int FullYear(int year);

/// A date, a time or both in US order or ISO order, month names in English. Nothing if malformed.
std::optional<double> ParseDate(std::u16string_view text);

/// As CStr writes a Date: 12/31/1999 1:02:03 PM; without the part that is zero.
std::u16string DateText(double serial);
std::u16string ShortDateText(const DateParts& parts);
std::u16string LongTimeText(const DateParts& parts);

extern const std::string_view kMonthNames[12];
extern const std::string_view kWeekdayNames[7];

} // namespace zentrel::vbscript
