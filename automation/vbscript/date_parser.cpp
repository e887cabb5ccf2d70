#include "automation/vbscript/calendar.h"
#include "automation/vbscript/text.h"

#include <chrono>
#include <vector>

namespace zentrel::vbscript {
namespace {

struct Field {
    int value;
    int digits;
};

/// Collects what a date text consists of, then decides which number is which.
class DateParser {
  public:
    explicit DateParser(std::u16string_view text) : text_(text) {}

    std::optional<double> Run() {
        while (Skip()) {
            if (IsDigit(text_[at_]) ? !TakeNumber() : !TakeWord()) return std::nullopt;
        }
        if (fields_.empty() && !month_ && !has_time_) return std::nullopt;
        return Finish();
    }

  private:
    char16_t Peek() const { return at_ < text_.size() ? text_[at_] : u'\0'; }

    /// Blanks and separators; false at the end.
    bool Skip() {
        while (at_ < text_.size()) {
            const auto c = text_[at_];
            const bool separator = c == u'/' || c == u'-' || c == u',' || c == u'.';
            if (!IsBlank(c) && !separator) return true;
            if (separator && fields_.empty() && !month_) bad_ = true;
            ++at_;
        }
        return false;
    }

    std::optional<Field> Number() {
        Field field{0, 0};
        for (; IsDigit(Peek()); ++at_, ++field.digits) {
            if (field.digits == 4) return std::nullopt;
            field.value = field.value * 10 + (text_[at_] - u'0');
        }
        return field;
    }

    void SkipBlanks() {
        while (IsBlank(Peek()))
            ++at_;
    }

    bool TakeNumber() {
        const auto field = Number();
        if (!field) return false;
        if (Peek() == u':') return TakeTime(field->value);
        const auto mark = at_;
        SkipBlanks();
        if (const auto half = TakeHalf()) return SetTime(field->value, 0, 0, half);
        at_ = mark;
        fields_.push_back(*field);
        return fields_.size() <= 3;
    }

    bool TakeTime(int hour) {
        int rest[2] = {0, 0};
        for (int i = 0; i < 2 && Peek() == u':'; ++i) {
            ++at_;
            const auto field = Number();
            if (!field || field->digits == 0 || field->digits > 2) return false;
            rest[i] = field->value;
        }
        SkipBlanks();
        return SetTime(hour, rest[0], rest[1], TakeHalf());
    }

    /// AM or PM, as its first letter in lower case.
    char16_t TakeHalf() {
        const auto first = Lower(Peek());
        if (first != u'a' && first != u'p') return 0;
        std::size_t end = at_ + 1;
        if (end < text_.size() && Lower(text_[end]) == u'm') ++end;
        if (end < text_.size() && IsLetter(text_[end])) return 0;
        at_ = end;
        return first;
    }

    bool SetTime(int hour, int minute, int second, char16_t half) {
        if (has_time_ || minute > 59 || second > 59 || hour > 23) return false;
        if (half != 0) {
            if (hour > 12 && half == u'a') return false;
            if (hour <= 12) hour = hour % 12 + (half == u'p' ? 12 : 0);
        }
        has_time_ = true;
        seconds_ = hour * 3600 + minute * 60 + second;
        return true;
    }

    bool TakeWord() {
        const auto start = at_;
        while (IsLetter(Peek()))
            ++at_;
        const auto word = Lower(text_.substr(start, at_ - start));
        if (word.size() < 3) return false;
        for (int m = 0; m < 12; ++m) {
            const auto name = Lower(Widen(kMonthNames[m]));
            if (name.substr(0, word.size()) != word) continue;
            if (month_) return false;
            month_ = m + 1;
            month_place_ = fields_.size();
            return true;
        }
        for (const auto day : kWeekdayNames) {
            const auto name = Lower(Widen(day));
            if (name == word || name.substr(0, 3) == word) return true;
        }
        return false;
    }

    static int ThisYear() {
        const std::chrono::year_month_day today{
            std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now())};
        return static_cast<int>(today.year());
    }

    std::optional<double> Finish() {
        if (bad_) return std::nullopt;
        double day = 0;
        if (!fields_.empty() || month_) {
            const auto found = month_ ? WithMonthName() : Numeric();
            if (!found) return std::nullopt;
            day = *found;
        }
        const double time = seconds_ / 86400.0;
        return day < 0 ? day - time : day + time;
    }

    static std::optional<double> Compose(Field year, int month, int day) {
        const int full = year.digits <= 2 ? FullYear(year.value) : year.value;
        if (full < 100 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(full, month))
            return std::nullopt;
        return static_cast<double>(DayNumber(full, month, day));
    }

    std::optional<double> WithMonthName() const {
        if (fields_.size() == 2) {
            // 5 May 2001, May 5 2001 and 2001 May 5.
            const bool year_first = month_place_ == 1 && fields_[0].digits > 2;
            const auto& day = fields_[year_first ? 1 : 0];
            return Compose(fields_[year_first ? 0 : 1], *month_, day.value);
        }
        if (fields_.size() != 1) return std::nullopt;
        const auto& only = fields_[0];
        if (only.digits > 2 || only.value > 31) return Compose(only, *month_, 1);
        return Compose({ThisYear(), 4}, *month_, only.value);
    }

    std::optional<double> Numeric() const {
        if (fields_.size() == 2) {
            const auto& [a, b] = std::pair(fields_[0], fields_[1]);
            const Field this_year{ThisYear(), 4};
            if (a.digits > 2) return Compose(a, b.value, 1);
            if (b.digits > 2) return Compose(b, a.value, 1);
            const auto usual = Compose(this_year, a.value, b.value);
            if (usual) return usual;
            const auto swapped = Compose(this_year, b.value, a.value);
            return swapped ? swapped : Compose(b, a.value, 1);
        }
        if (fields_.size() != 3) return std::nullopt;
        const auto& a = fields_[0];
        const auto& b = fields_[1];
        const auto& c = fields_[2];
        if (a.digits > 2) return Compose(a, b.value, c.value);
        if (const auto usual = Compose(c, a.value, b.value)) return usual;
        if (const auto day_first = Compose(c, b.value, a.value)) return day_first;
        return Compose(a, b.value, c.value);
    }

    std::u16string_view text_;
    std::size_t at_ = 0;
    std::vector<Field> fields_;
    std::optional<int> month_;
    std::size_t month_place_ = 0;
    bool has_time_ = false;
    bool bad_ = false;
    int seconds_ = 0;
};

} // namespace

std::optional<double> ParseDate(std::u16string_view text) {
    return DateParser(text).Run();
}

} // namespace zentrel::vbscript
