#include <cmath>
#include <optional>
#include <string>

#include "device/number_text.h"
#include "device/part.h"
#include "device/prgmbits.h"

namespace zentrel {
namespace {

// An entry farther away than this is never the nearest; the search then ends on entry 0.
constexpr double kFarthest = 10000;

// What is left of `v` above a field of `length` bits, on 32-bit integers.
double RestAbove(double v, std::int16_t length) {
    const std::int32_t bits = RoundToLong(v);
    if (length >= 31) return 0;
    const std::int32_t own = length > 0 ? (std::int32_t{1} << length) - 1 : 0;
    return static_cast<double>(bits & ~own) / std::ldexp(1.0, length);
}

} // namespace

void cPrgmBits::RunHook(const std::string& procedure) const {
    if (procedure.empty()) return;
    // The script may load another device and take this field away with the present one.
    cPart& part = part_;
    const std::string id = ID, module = script_name, name = procedure;
    const bool stands =
        part.journal().RunHook([&] { part.upward().hooks->ExecuteScript(module, name); });
    if (!stands) throw NotFound(part.PrgmBits.name(), id);
}

void cPrgmBits::SetBitValue(double v) {
    part_.journal().Run(ID, [this, v]() mutable {
        RunHook(script_before_prog);
        if (Position >= 0) {
            v = std::abs(v);
            const bool ownBits = step() != 0.0;
            if (ownBits) {
                Reg().SetBits(v, Position, Length, DataInverted);
                if (!LinkedBits.empty()) v = RestAbove(v, Length);
            }
            if (!ownBits || !LinkedBits.empty()) F(LinkedBits).SetBitValue(v);
        }
        RunHook(script_after_prog);
    });
}

void cPrgmBits::WriteSign(bool positive) {
    if (!Polarity) return;
    Reg().SetBits(positive != PolarityInverted ? 1 : 0, PolarityPosition, 1);
}

void cPrgmBits::SetPositive() {
    WriteSign(true);
}
void cPrgmBits::SetNegative() {
    WriteSign(false);
}

void cPrgmBits::SetValue(double d) {
    if (Position < 0) return;
    part_.journal().Run(ID, [this, d]() mutable {
        d = KeptByGreater(d);
        d = isPlain() ? StorePlain(d) : StoreListed(d);
        if (!MirrorBits.empty()) F(MirrorBits).SetValue(d);
    });
}

double cPrgmBits::KeptByGreater(double d) const {
    if (GreaterBitName.empty()) return d;
    const double limit = F(GreaterBitName).Value();
    if (GreaterEqual) return d < limit ? limit : d;
    return d > limit ? limit : d;
}

double cPrgmBits::WithinLimits(double d) const {
    if (d < MinimumValue) d = MinimumValue;
    if (MaximumValue > 0 && d > MaximumValue) d = MaximumValue;
    const double maximum = Maximum();
    return d > maximum ? maximum : d;
}

// Returns what a field that mirrors this one gets: the limited number, or what the linked part got.
double cPrgmBits::StorePlain(double d) {
    WriteSign(d >= 0);
    d = WithinLimits(d);
    const double size = step();
    // Not on 32 bits: a chain may be wider, and a field takes its own low bits.
    const double bits = size == 0.0 ? 0 : RoundHalfEven((std::abs(d) - ZeroValue) / size);
    Reg().SetBits(bits, Position, Length, DataInverted);
    if (!LinkedBits.empty()) {
        d = d - size * raw() + ZeroValue;
        F(LinkedBits).SetValue(d);
    }
    return d;
}

template<typename NumberOf>
int cPrgmBits::Nearest(int count, double d, NumberOf numberOf) const {
    int best = 0;
    double distance = kFarthest;
    for (int i = 0; i < count; ++i) {
        const std::optional<double> number = numberOf(i);
        if (!number) continue;
        if (*number == d) return i;
        if (std::abs(*number - d) < distance) {
            distance = std::abs(*number - d);
            best = i;
        }
    }
    return best;
}

double cPrgmBits::StoreListed(double d) {
    if (!hasValues()) {
        // An entry without a number is never the nearest one.
        const int count = static_cast<int>(strings_.size());
        SetBitValue(Nearest(count, d, [this](int i) { return ParseFileNumber(StringAt(i)); }));
        return d;
    }
    const int index =
        Nearest(static_cast<int>(values_.size()), d, [this](int i) { return ValueAt(i); });
    d = hasStrings() ? RoundToLong(NumberAt(index)) : index;
    d = WithinLimits(d);
    SetBitValue(d);
    return d;
}

void cPrgmBits::StepTo(double bits) {
    if (MaximumValue > 0 && bits > MaximumValue) bits = MaximumValue;
    const double maximum = Maximum();
    SetBitValue(bits > maximum ? maximum : bits);
}

void cPrgmBits::FollowGreater() {
    if (GreaterBitName.empty()) return;
    const double limit = F(GreaterBitName).Value();
    const double value = Value();
    if (GreaterEqual ? value < limit : value > limit) SetValue(limit);
}

void cPrgmBits::Increment() {
    if (Position < 0) return;
    part_.journal().Run(ID, [this] {
        const double bits = BitValue();
        if (isCodedList()) {
            if (const int at = FindCode(RoundToLong(bits)); at >= 0) {
                SetBitValue(NumberAt((at + 1) % static_cast<int>(strings_.size())));
            }
        } else if (bits == 0.0) {
            SetPositive();
            StepTo(1);
        } else {
            StepTo(PolarityValue() > 0 ? bits + 1 : bits - 1);
        }
        if (!MirrorBits.empty()) F(MirrorBits).Increment();
        FollowGreater();
    });
}

void cPrgmBits::Decrement() {
    if (Position < 0) return;
    part_.journal().Run(ID, [this] {
        const std::int32_t bits = RoundToLong(BitValue());
        double next = 0;
        if (isCodedList()) {
            const int count = static_cast<int>(strings_.size());
            if (const int at = FindCode(bits); at >= 0) next = NumberAt((at + count - 1) % count);
        } else if (PolarityValue() >= 1 && bits >= 1) {
            next = bits - 1;
        } else if (Polarity) {
            if (bits == 0) SetNegative();
            next = bits == 0 ? 1 : static_cast<double>(bits) + 1;
        }
        if (!MirrorBits.empty()) F(MirrorBits).Decrement();
        FollowGreater();
        if (next < MinimumValue) next = RoundToLong(MinimumValue);
        SetBitValue(next);
    });
}

void cPrgmBits::ToggleBit() {
    if (Position < 0) return;
    part_.journal().Run(ID, [this] {
        if (Length == 1) {
            RunHook(script_before_prog);
            Reg().ToggleBit(Position);
            RunHook(script_after_prog);
        } else if (!isCodedList()) {
            SetBitValue(BitValue() + 1);
        } else if (const int at = FindCode(RoundToLong(BitValue())); at >= 0) {
            SetBitValue(NumberAt((at + 1) % static_cast<int>(strings_.size())));
        }
        if (!MirrorBits.empty()) F(MirrorBits).ToggleBit();
        FollowGreater();
    });
}

void cPrgmBits::SetValueText(std::string_view s) {
    for (std::size_t i = 0; i < strings_.size(); ++i) {
        if (EqualNoCase(strings_[i], s)) {
            SetBitValue(static_cast<double>(i));
            return;
        }
    }
    if (const auto number = ParseFileInt16(s)) SetBitValue(*number);
}

} // namespace zentrel
