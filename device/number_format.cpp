#include "device/number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include "device/number_text.h"
#include "device/text.h"

namespace zentrel {
namespace {

// One piece of a section: a digit place, the point, or literal text.
struct Piece {
    enum class Kind { Zero, Hash, Point, Literal } kind;
    std::string text;
};

struct Section {
    std::vector<Piece> pieces;
    int wholePlaces = 0;
    int wholeZeros = 0;
    int places = 0; // behind the point
    int placeZeros = 0;
    bool grouped = false;
    int percent = 0;
    int exponentDigits = 0; // 0: no exponent
    bool exponentPlus = false;
};

std::vector<std::string_view> SplitSections(std::string_view picture) {
    std::vector<std::string_view> sections;
    std::size_t start = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < picture.size(); ++i) {
        if (picture[i] == '"') quoted = !quoted;
        if (picture[i] == '\\')
            ++i;
        else if (picture[i] == ';' && !quoted) {
            sections.push_back(picture.substr(start, i - start));
            start = i + 1;
        }
    }
    sections.push_back(picture.substr(start));
    return sections;
}

void AddDigit(Section& section, char c, bool behindPoint) {
    const bool zero = c == '0';
    section.pieces.push_back({zero ? Piece::Kind::Zero : Piece::Kind::Hash, {}});
    if (behindPoint) {
        ++section.places;
        if (zero) section.placeZeros = section.places;
    } else {
        ++section.wholePlaces;
        if (zero || section.wholeZeros > 0) ++section.wholeZeros;
    }
}

// Takes "E+00" or "E-00" at `i`; returns how many characters it is, 0 when it is no exponent.
std::size_t TakeExponent(Section& section, std::string_view picture, std::size_t i) {
    if (i + 2 >= picture.size() || (picture[i + 1] != '+' && picture[i + 1] != '-')) return 0;
    std::size_t end = i + 2;
    while (end < picture.size() && (picture[end] == '0' || picture[end] == '#'))
        ++end;
    if (end == i + 2) return 0;
    section.exponentPlus = picture[i + 1] == '+';
    section.exponentDigits = static_cast<int>(end - i - 2);
    return end - i;
}

Section ParseSection(std::string_view picture) {
    Section section;
    bool behindPoint = false;
    const auto literal = [&](std::string_view text) {
        section.pieces.push_back({Piece::Kind::Literal, std::string(text)});
    };
    for (std::size_t i = 0; i < picture.size(); ++i) {
        const char c = picture[i];
        if (c == '0' || c == '#') {
            AddDigit(section, c, behindPoint);
        } else if (c == '.' && !behindPoint) {
            behindPoint = true;
            section.pieces.push_back({Piece::Kind::Point, {}});
        } else if (c == ',') {
            section.grouped = true;
        } else if (c == '%') {
            ++section.percent;
            literal("%");
        } else if (c == '\\' && i + 1 < picture.size()) {
            literal(picture.substr(++i, 1));
        } else if (c == '"') {
            const auto end = std::min(picture.find('"', i + 1), picture.size());
            literal(picture.substr(i + 1, end - i - 1));
            i = end;
        } else if ((c == 'E' || c == 'e') && section.exponentDigits == 0) {
            const std::size_t taken = TakeExponent(section, picture, i);
            if (taken == 0)
                literal(picture.substr(i, 1));
            else
                i += taken - 1;
        } else {
            literal(picture.substr(i, 1));
        }
    }
    return section;
}

// A magnitude as decimal digits: 0.DIGITS times 10^point.
struct Decimal {
    std::string digits;
    int point = 0;

    bool zero() const { return digits.find_first_not_of('0') == std::string::npos; }
};

// The 15 significant digits that a number shows anywhere, so that 1.005 counts as a half.
Decimal Decompose(double magnitude) {
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                   std::chars_format::scientific, 14)
                         .ptr;
    const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const auto mark = text.find('e');
    Decimal number{std::string(text.substr(0, mark)), 0};
    number.digits.erase(1, 1);
    const std::size_t sign = text[mark + 1] == '+' ? 1 : 0;
    std::from_chars(text.data() + mark + 1 + sign, text.data() + text.size(), number.point);
    ++number.point;
    return number;
}

// Keeps `count` digits; a half goes away from zero.
void RoundTo(Decimal& number, int count) {
    if (count < 0) {
        number.digits.clear();
        return;
    }
    const auto kept = static_cast<std::size_t>(count);
    const bool up = kept < number.digits.size() && number.digits[kept] >= '5';
    number.digits.resize(kept, '0');
    if (!up) return;
    std::size_t at = kept;
    while (at > 0 && number.digits[at - 1] == '9')
        number.digits[--at] = '0';
    if (at > 0) {
        ++number.digits[at - 1];
    } else {
        number.digits.push_back('0');
        number.digits.front() = '1';
        ++number.point;
    }
}

std::string WholeDigits(std::string whole, const Section& section) {
    if (whole == "0") whole.clear();
    if (static_cast<int>(whole.size()) < section.wholeZeros) {
        whole.insert(0, static_cast<std::size_t>(section.wholeZeros) - whole.size(), '0');
    }
    if (section.grouped) {
        for (int at = static_cast<int>(whole.size()) - 3; at > 0; at -= 3) {
            whole.insert(static_cast<std::size_t>(at), 1, ',');
        }
    }
    return whole;
}

std::string ExponentText(int exponent, const Section& section) {
    std::string text = "E";
    if (exponent < 0)
        text += '-';
    else if (section.exponentPlus)
        text += '+';
    return text + KeyNumber(std::abs(exponent), section.exponentDigits);
}

// The number's digits flow in where the first place stands; literals keep their order around it.
std::string Assemble(const Section& section, const std::string& whole, const std::string& fraction,
                     const std::string& exponent) {
    std::string text;
    std::size_t lastDigit = 0;
    for (std::size_t i = 0; i < section.pieces.size(); ++i) {
        if (section.pieces[i].kind != Piece::Kind::Literal) lastDigit = i;
    }
    bool wholeDone = false;
    for (std::size_t i = 0; i < section.pieces.size(); ++i) {
        const Piece& piece = section.pieces[i];
        if (piece.kind == Piece::Kind::Literal) {
            text += piece.text;
        } else if (!wholeDone) {
            text += whole;
            wholeDone = true;
        }
        if (piece.kind == Piece::Kind::Point) text += '.' + fraction;
        if (i == lastDigit && wholeDone) text += exponent;
    }
    return text;
}

} // namespace

std::string FormatNumber(double value, std::string_view picture) {
    if (!std::isfinite(value)) return NumberToText(value);
    const auto sections = SplitSections(picture);
    std::size_t use = 0;
    if (value < 0 && sections.size() > 1 && !sections[1].empty()) use = 1;
    if (value == 0.0 && sections.size() > 2 && !sections[2].empty()) use = 2;
    const Section section = ParseSection(sections[use]);
    if (section.wholePlaces + section.places == 0) return Assemble(section, {}, {}, {});

    Decimal number = Decompose(std::abs(value));
    std::string exponent;
    if (section.exponentDigits > 0) {
        const int wholeDigits = std::max(section.wholePlaces, 1);
        RoundTo(number, wholeDigits + section.places);
        const int power = number.zero() ? 0 : number.point - wholeDigits;
        number.point -= power;
        exponent = ExponentText(power, section);
    } else {
        number.point += 2 * section.percent;
    }
    RoundTo(number, number.point + section.places);
    const auto whole =
        std::min(static_cast<std::size_t>(std::max(number.point, 0)), number.digits.size());
    std::string fraction = number.digits.substr(whole);
    fraction.insert(0, static_cast<std::size_t>(section.places) - fraction.size(), '0');
    while (static_cast<int>(fraction.size()) > section.placeZeros && fraction.back() == '0') {
        fraction.pop_back();
    }
    const std::string text =
        Assemble(section, WholeDigits(number.digits.substr(0, whole), section), fraction, exponent);
    return value < 0 && use == 0 && !number.zero() ? '-' + text : text;
}

} // namespace zentrel
