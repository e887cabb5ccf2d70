#include "synth/stepping.h"

#include "device/number_text.h"
#include "device/part.h"
#include "synth/clock_link.h"
#include "synth/limits.h"
#include "synth/panel_change.h"

namespace zentrel {
namespace {

enum class Direction { Up, Down };

void Step(cPrgmBits& field, Direction direction) {
    direction == Direction::Up ? field.Increment() : field.Decrement();
}

template<Direction direction>
void StepR(cPart& part, int i) {
    if (part.ID.empty()) return;
    PanelChange(part, i, "spnRCounter", Tail::FourThenLoad,
                [&] { Step(part.PrgmBits(part.PLLs(i).RCounterName()), direction); });
}

// In MHz, from the comparison frequency as it is shown; 0 while the box shows no number.
double StepOfN(const cPart& part, const cPLL& pll, double kHzPerStep) {
    const auto khz = EntryNumber(pll.panel.txtFpd.Text);
    return khz ? GetPreNdivider(part, pll.IDnum()) * (*khz / kHzPerStep) : 0;
}

// The PLL of the selected tab; the spinner's own when the tab is no PLL's.
cPLL& PllOfSelectedTab(cPart& part, int i) {
    const TabStrip& tabs = *part.upward().tabs;
    return PllOfTag(part, tabs.TabCaption(tabs.SelectedTab()), i);
}

template<Direction direction>
void StepN(cPart& part, int i) {
    if (part.ID.empty()) return;
    PanelChange(part, i, "spnNCounter", Tail::FourThenLoad, [&] {
        const cPLL& own = part.PLLs(i);
        const double step = StepOfN(part, own, 1000);
        if (step == 0) return;
        cPLL& pll = PllOfSelectedTab(part, i);
        pll.SetVCOFrequency(pll.VCOFrequency() + (direction == Direction::Up ? step : -step));
        if (direction == Direction::Down) {
            UpdateCLKforPLL(part, own.ID());
        } else if (LinkedBlock* block = LinkedBlockOf(own); !own.LinkedCLKDist().empty() && block) {
            SetDrivenFrequency(part, *block, pll.VCOFrequency());
        }
    });
}

struct FractionPart {
    std::string_view name;
    Spinner PllPanel::*spinner;
    TextBox PllPanel::*box;
};
constexpr FractionPart kNumerator{"SpnFractNum", &PllPanel::SpnFractNum, &PllPanel::txtFractNum};
constexpr FractionPart kDenominator{"spnFractDen", &PllPanel::spnFractDen, &PllPanel::txtFractDen};

template<const FractionPart& what, Direction direction>
void StepFraction(cPart& part, int i) {
    PllPanel& panel = part.PLLs(i).panel;
    const std::string& tag = (panel.*what.spinner).Tag;
    if (tag.empty()) return;
    PanelChange(part, i, what.name, Tail::LoadThenFour, [&] {
        Step(part.PrgmBits(tag), direction);
        (panel.*what.box).Text = part.PrgmBits(tag).Text();
    });
}

struct OutputPart {
    std::string_view name;
    TextBox PllPanel::*box;
    void (cPLL::*set)(std::int32_t);
};
constexpr OutputPart kOutput0{"SpnOUT0_DIV", &PllPanel::txtOUT0_DIV, &cPLL::SetOUT0_DIV};
constexpr OutputPart kOutput1{"SpnOUT1_DIV", &PllPanel::txtOUT1_DIV, &cPLL::SetOUT1_DIV};

// The field's text feeds its number, and both the divider. A text that is no number leaves the
// field's number to do so.
template<typename Move>
void MoveOutputDivider(cPart& part, int i, const OutputPart& output, Move move) {
    PllPanel& panel = part.PLLs(i).panel;
    TextBox& box = panel.*output.box;
    if (box.Tag.empty()) return;
    PanelChange(part, i, output.name, Tail::LoadThenFour, [&] {
        move(part.PrgmBits(box.Tag));
        const cPrgmBits& field = part.PrgmBits(box.Tag);
        box.Text = field.Text();
        const double number = EntryNumber(box.Text).value_or(field.Value());
        cPLL& pll = PllOfTag(part, panel.txtFpd.Tag, i);
        if (const auto divider = ToInt32(number)) (pll.*output.set)(*divider);
    });
}

template<const OutputPart& output, Direction direction>
void StepOutput(cPart& part, int i) {
    MoveOutputDivider(part, i, output, [](cPrgmBits& field) { Step(field, direction); });
}

constexpr auto Up = Direction::Up;
constexpr auto Down = Direction::Down;

constexpr PllSpinner kSpinners[] = {
    {"spnNCounter", &PllPanel::spnNCounter, StepN<Up>, StepN<Down>},
    {"spnRCounter", &PllPanel::spnRCounter, StepR<Up>, StepR<Down>},
    // A smaller R is a larger comparison frequency.
    {"SpnFpd", &PllPanel::SpnFpd, StepR<Down>, StepR<Up>},
    {"SpnFractNum", &PllPanel::SpnFractNum, StepFraction<kNumerator, Up>,
     StepFraction<kNumerator, Down>},
    {"spnFractDen", &PllPanel::spnFractDen, StepFraction<kDenominator, Up>,
     StepFraction<kDenominator, Down>},
    {"SpnOUT0_DIV", &PllPanel::SpnOUT0_DIV, StepOutput<kOutput0, Up>, StepOutput<kOutput0, Down>},
    {"SpnOUT1_DIV", &PllPanel::SpnOUT1_DIV, StepOutput<kOutput1, Up>, StepOutput<kOutput1, Down>},
};

} // namespace

std::span<const PllSpinner> PllSpinners() {
    return kSpinners;
}

const PllSpinner* FindPllSpinner(std::string_view name) {
    for (const PllSpinner& spinner : kSpinners) {
        if (EqualNoCase(spinner.name, name)) return &spinner;
    }
    return nullptr;
}

void SpnOUT0_DIV_Change(cPart& part, int i) {
    MoveOutputDivider(part, i, kOutput0, [](cPrgmBits&) {});
}

void SpnOUT1_DIV_Change(cPart& part, int i) {
    MoveOutputDivider(part, i, kOutput1, [](cPrgmBits&) {});
}

} // namespace zentrel
