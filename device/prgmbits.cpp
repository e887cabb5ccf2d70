#include "device/prgmbits.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "device/number_format.h"
#include "device/number_text.h"
#include "device/part.h"

namespace zentrel {

// What a field reads: bits, value, text, limits. What it writes stands in prgmbits_write.cpp.

cPrgmBits::cPrgmBits(cPart& part, std::string id, std::string reg, std::int16_t position,
                     std::int16_t length, bool display)
    : ID(std::move(id)), Register(std::move(reg)), Position(position), Length(length),
      Display(display), part_(part) {}

cRegister& cPrgmBits::Reg() const {
    return part_.Registers(Register);
}

cPrgmBits& cPrgmBits::F(std::string_view name) const {
    return part_.PrgmBits(name);
}

double cPrgmBits::raw() const {
    return Reg().GetBits(Position, Length, DataInverted);
}

double cPrgmBits::step() const {
    return StepValueBitName.empty() ? StepValue : F(StepValueBitName).Value();
}

double cPrgmBits::BitValue() const {
    if (Position < 0) return -1;
    return part_.journal().Run(ID, [this] {
        const double own = raw();
        if (LinkedBits.empty()) return own;
        const cPrgmBits* higher = part_.PrgmBits.Find(LinkedBits);
        if (higher == nullptr) {
            part_.upward().messages->Show(
                "Error... No program bit: " + LinkedBits +
                " required for: tmpLng = Part.PrgmBits(m_sLinkedBits).BitValue");
            return own;
        }
        return std::ldexp(higher->BitValue(), Length) + own;
    });
}

std::int16_t cPrgmBits::PolarityValue() const {
    if (!Polarity) return 1;
    const bool one = Reg().GetBits(PolarityPosition, 1) != 0.0;
    return one != PolarityInverted ? 1 : -1;
}

double cPrgmBits::Value() const {
    return part_.journal().Run(ID, [this] { return ReadValue(); });
}

double cPrgmBits::ReadValue() const {
    if (hasValues()) {
        if (Position == -1) return ValueAt(0);
        if (!hasStrings()) return ValueAt(ListIndex());
        const int index = FindCode(ListIndex());
        return index < 0 ? 0.0 : ValueAt(index);
    }
    if (hasStrings()) return NumberAt(Position == -1 ? 0 : ListIndex());
    const double own = PolarityValue() * ZeroValue + step() * raw();
    if (LinkedBits.empty()) return own;
    const double higher = F(LinkedBits).Value();
    return higher < 0 ? higher - own : higher + own;
}

std::string cPrgmBits::Text() const {
    return part_.journal().Run(ID, [this]() -> std::string {
        const auto index = [this] { return Position == -1 ? 0 : ListIndex(); };
        if (hasValues()) return NumberToText(ValueAt(index()));
        if (hasStrings()) return StringAt(index());
        double v = PolarityValue() * (ZeroValue + step() * raw());
        if (!LinkedBits.empty()) {
            const double higher = F(LinkedBits).Value();
            v = higher < 0 ? higher - v : higher + v;
        }
        return FormatString.empty() ? NumberToText(v) + Units : FormatNumber(v, FormatString);
    });
}

std::int16_t cPrgmBits::TotalLength() const {
    return part_.journal().Run(ID, [this] {
        const int higher = LinkedBits.empty() ? 0 : F(LinkedBits).TotalLength();
        return RoundToInteger(static_cast<double>(Length) + higher);
    });
}

double cPrgmBits::Maximum() const {
    return part_.journal().Run(ID, [this] {
        if (hasValues()) return std::max(0.0, *std::max_element(values_.begin(), values_.end()));
        double largest = 0;
        bool numeric = false;
        for (std::size_t i = 0; hasStrings() && i < strings_.size(); ++i) {
            if (const auto number = ParseFileNumber(strings_[i])) {
                numeric = true;
                largest = std::max(largest, *number);
            }
        }
        if (numeric) return largest;
        const double own = (std::ldexp(1.0, Length) - 1) * step() + ZeroValue;
        return LinkedBits.empty() ? own : own + F(LinkedBits).Maximum();
    });
}

std::int32_t cPrgmBits::Minimum() const {
    return Polarity ? RoundToLong(-Maximum()) : 0;
}

std::int16_t cPrgmBits::ArrayCount() const {
    if (hasValues()) return static_cast<std::int16_t>(values_.size());
    return hasStrings() ? static_cast<std::int16_t>(strings_.size()) : std::int16_t{0};
}

void cPrgmBits::SetValueArray(std::vector<double> values) {
    if (values.empty()) values.push_back(0.0);
    values_ = std::move(values);
}

void cPrgmBits::SetStringArray(std::vector<std::string> strings) {
    if (strings.empty()) strings.emplace_back();
    strings_ = std::move(strings);
}

std::int16_t cPrgmBits::GetStringArray(std::vector<std::string>& out) const {
    out = strings_;
    return static_cast<std::int16_t>(strings_.size() - 1);
}

std::string cPrgmBits::GetValueText() const {
    if (!hasStrings()) return "NOSTRING";
    const double bits = BitValue();
    if (bits >= static_cast<double>(strings_.size())) return "NOSTRING";
    return StringAt(RoundToLong(bits));
}

std::int32_t cPrgmBits::ListIndex() const {
    return RoundToLong(BitValue());
}

double cPrgmBits::ValueAt(std::int32_t index) const {
    if (index < 0 || index >= static_cast<std::int32_t>(values_.size())) {
        throw OutOfRange("entry " + std::to_string(index) + " of the list of " + ID);
    }
    return values_[static_cast<std::size_t>(index)];
}

const std::string& cPrgmBits::StringAt(std::int32_t index) const {
    if (index < 0 || index >= static_cast<std::int32_t>(strings_.size())) {
        throw OutOfRange("entry " + std::to_string(index) + " of the list of " + ID);
    }
    return strings_[static_cast<std::size_t>(index)];
}

double cPrgmBits::NumberAt(std::int32_t index) const {
    const std::string& text = StringAt(index);
    if (const auto number = ParseFileNumber(text)) return *number;
    throw TypeMismatch("\"" + text + "\" in the list of " + ID);
}

int cPrgmBits::FindCode(std::int32_t code) const {
    for (std::size_t i = 0; i < strings_.size(); ++i) {
        const auto number = ParseFileNumber(strings_[i]);
        if (number && *number == static_cast<double>(code)) return static_cast<int>(i);
    }
    return -1;
}

} // namespace zentrel
