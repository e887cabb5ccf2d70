#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/limits.h"
#include "synth/pll.h"

namespace zentrel {
namespace {

constexpr double kHzPerMHz = 1e6;

// Stands in for a crystal that nobody has set yet.
constexpr double kDefaultCrystalHz = 1e6;

bool IsFrequency(double value) {
    return value != 0 && IsUsable(value);
}

} // namespace

bool cPLL::vcoStays() const {
    return part_.session().bVCOFixed;
}

// An R of 0 is written as 1. Still 0 when the field can't be reached or won't take it.
double cPLL::RepairedR() const {
    double r = RValue();
    if (r == 0) {
        StoreR(1);
        r = RValue();
    }
    return r;
}

double cPLL::ComparisonHz() const {
    const double r = RepairedR();
    return r == 0 ? 0 : Doubler() * crystal_ / r;
}

void cPLL::SetXtalFrequency(double mhz) {
    const double hz = kHzPerMHz * mhz;
    if (!IsUsable(hz)) return;
    const double before = crystal_;
    crystal_ = hz == 0 ? 1.0 : hz;
    // The first crystal is the part file's, and N is then the file's too.
    if (!vcoStays() || before == 0) return;
    try {
        double n = NValue() * (before / crystal_);
        if (!StoreN(n)) crystal_ = before;
    } catch (const ScriptFailure&) {
        throw;
    } catch (...) {
        crystal_ = before;
        throw;
    }
}

double cPLL::PDFrequency() const {
    return ComparisonHz() / 1000;
}

void cPLL::SetPDFrequency(double khz) {
    if (!IsFrequency(khz)) return;
    part_.journal().Attempt(rCounter_, [&] {
        const double before = RValue();
        if (crystal_ == 0) crystal_ = kDefaultCrystalHz;
        if (!StoreR(Doubler() * crystal_ / khz / 1000)) return false;
        if (!vcoStays()) return true;
        const double now = RValue();
        if (before == 0 || now == 0) return false;
        double n = NValue() / (before / now);
        return StoreN(n);
    });
}

cPLL::Feedback cPLL::FeedbackPath() const {
    Feedback path;
    if (linkedBlock_.empty()) return path;
    const ClockMode mode = ClockModeOf(part_);
    path.writable = mode != ClockMode::Distribution && mode != ClockMode::Unknown;
    const LinkedBlock* block = LinkedBlockOf(*this);
    if (DrivenInputOf(part_, block) != DrivenInput::InternalVCO) return path;
    path.extra = ExtraDivider();
    if (block != nullptr && !block->VCO_div_bypassed() && !block->InputDividerBinding().empty()) {
        path.divider = RoundToInteger(Field(block->InputDividerBinding()).Value());
    }
    return path;
}

double cPLL::VCOFrequency() const {
    const double comparison = ComparisonHz();
    const Feedback path = FeedbackPath();
    return comparison * NValue() * path.divider * path.extra / kHzPerMHz;
}

void cPLL::SetVCOFrequency(double mhz) {
    if (!IsFrequency(mhz)) return;
    const double r = RepairedR();
    if (crystal_ == 0) crystal_ = kDefaultCrystalHz;
    const Feedback path = FeedbackPath();
    if (!path.writable || r == 0) return;
    const double divisor = path.divider * (crystal_ / r * Doubler()) * path.extra;
    if (divisor == 0) return;
    double n = kHzPerMHz * mhz / divisor;
    StoreN(n);
}

void cPLL::SetOutFrequency(int output, double mhz) {
    if (!IsFrequency(mhz)) return;
    if (!vcoStays()) {
        SetVCOFrequency((output == 0 ? OUT0_DIV() : OUT1_DIV()) * mhz);
        return;
    }
    const double vco = ComparisonHz() * NValue() / kHzPerMHz;
    if (const auto divider = ToInt32(vco / mhz)) SetOutDivider(output, *divider);
}

} // namespace zentrel
