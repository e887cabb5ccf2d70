#include "synth/pll.h"

#include <algorithm>
#include <cmath>

#include "device/number_text.h"
#include "device/part.h"
#include "synth/limits.h"

namespace zentrel {

// The counters. Frequencies stand in pll_frequency.cpp.

namespace {
// What an N beyond 32 bits is replaced by.
constexpr double kSafeN = 1000;
} // namespace

void cPLL::Initialize() const {
    part_.upward().messages->Show("Create PLL");
}

cPrgmBits& cPLL::Field(std::string_view name) const {
    return part_.PrgmBits(name);
}

template<typename Access>
void cPLL::TellFailure(std::string_view what, const std::string& name, Access access) const {
    try {
        access();
    } catch (const Error& error) {
        part_.upward().messages->Show(std::string(what) + name +
                                      "  Error: " + NumberToSignedText(error.number()));
    }
}

bool cPLL::IsDoublerSwitch(const cPrgmBits& field) {
    if (field.ZeroValue != 0 || field.StepValue != 1) return false;
    return field.ArrayCount() == 0 || field.Maximum() <= 1;
}

std::int16_t cPLL::Doubler() const {
    if (doubler_.empty()) return 1;
    const cPrgmBits& field = Field(doubler_);
    const double factor = field.Value() + (IsDoublerSwitch(field) ? 1 : 0);
    return std::max(std::int16_t{1}, RoundToInteger(factor));
}

double cPLL::RValue() const {
    double r = 0;
    TellFailure("Failed to Get RValue in cPLL.  Is R really: ", rCounter_,
                [&] { r = Field(rCounter_).Value(); });
    return r;
}

void cPLL::SetRValue(double r) {
    StoreR(r);
}

bool cPLL::StoreR(double r) const {
    const auto rounded = ToInt32(r);
    if (!rounded) return false;
    TellFailure("Failed to Set RValue in cPLL.  Is R Counter really = ", rCounter_, [&] {
        part_.journal().Attempt(rCounter_, [&] {
            Field(rCounter_).SetValue(*rounded);
            return true;
        });
    });
    return true;
}

double cPLL::NValue() const {
    constexpr std::string_view kFailed = "Failed to Get NValue in cPLL.  Is N really: ";
    double n = 0;
    TellFailure(kFailed, nCounter_, [&] { n = Field(nCounter_).Value(); });
    if (!numerator_.empty()) {
        TellFailure(kFailed, nCounter_, [&] {
            const std::int32_t denominator = DenValue();
            if (denominator > 0) n += NumValue() / static_cast<double>(denominator);
        });
    }
    return n;
}

void cPLL::SetNValue(double& v) {
    StoreN(v);
}

// False when `v` is no number that N could be computed from; nothing is written then.
bool cPLL::StoreN(double& v) {
    if (!IsUsable(v)) return false;
    const bool fractional = !numerator_.empty();
    double n = fractional ? std::trunc(v) : RoundHalfEven(v);
    if (!ToInt32(n)) v = n = kSafeN;
    const double fraction = v - n;
    return part_.journal().Attempt(nCounter_, [&] {
        const bool untouched =
            part_.session().bDisplayUpdating == 1 && Field(nCounter_).Value() == n;
        if (!untouched) Field(nCounter_).SetValue(n);
        if (fractional) {
            const std::int32_t denominator = DenValue();
            const bool beyond = n > Field(nCounter_).Value();
            SetNumValue(beyond ? denominator : RoundToLong(fraction * denominator));
        }
        return true;
    });
}

std::int32_t cPLL::NumValue() const {
    return RoundToLong(Field(numerator_).Value());
}

void cPLL::SetNumValue(std::int32_t numerator) {
    Field(numerator_).SetValue(numerator);
}

std::int32_t cPLL::DenValue() const {
    return RoundToLong(Field(denominator_).Value());
}

void cPLL::SetDenValue(std::int32_t denominator) {
    Field(denominator_).SetValue(denominator);
}

const std::string& cPLL::OutputField(int output) const {
    return output == 0 ? panel.txtOUT0_DIV.Tag : panel.txtOUT1_DIV.Tag;
}

void cPLL::FollowOutputField(int output) {
    const std::string& field = OutputField(output);
    if (field.empty()) return;
    const std::int32_t divider = ToInt32(Field(field).Value()).value_or(1);
    out_[static_cast<std::size_t>(output)] = std::max(1, divider);
}

void cPLL::SetOutDivider(int output, std::int32_t divider) {
    divider = std::max(1, divider);
    const std::string& field = OutputField(output);
    if (!field.empty()) Field(field).SetValue(divider);
    out_[static_cast<std::size_t>(output)] = divider;
    FollowOutputField(output);
}

void cPLL::Restore(const Held& held) {
    crystal_ = held.crystalHz;
    nDivInput_ = held.nDivInput;
    out_ = held.outputDividers;
    extra1_ = held.extra1;
}

void cPLL::save_extra_pll_n_div_1() const {
    part_.upward().partFile->WriteKey(part_.ID, "PLLS", "EXTRA_PLL_N_DIV_1_" + KeyNumber(entry),
                                      NumberToText(extra1_));
}

} // namespace zentrel
