#include "synth/panel_change.h"

#include "device/part.h"
#include "synth/clock_link.h"
#include "transport/load_path.h"

namespace zentrel {
namespace {

// What a PLL and its block hold beside the register words.
class HeldState {
  public:
    explicit HeldState(cPLL& pll) : pll_(pll), held_(pll.held()) {
        const LinkedBlock* block = LinkedBlockOf(pll);
        if (block == nullptr) return;
        reference_ = block->RefOSC_Freq();
        external_ = block->ExtSRC_Freq();
        internal_ = block->IntVCO_Freq();
    }
    void Restore() {
        pll_.Restore(held_);
        LinkedBlock* block = LinkedBlockOf(pll_);
        if (block == nullptr) return;
        block->SetRefOSC_Freq(reference_);
        block->SetExtSRC_Freq(external_);
        block->SetIntVCO_Freq(internal_);
    }

  private:
    cPLL& pll_;
    cPLL::Held held_;
    double reference_ = 0, external_ = 0, internal_ = 0;
};

void RefreshFour(cPart& part) {
    Displays& displays = *part.upward().displays;
    displays.UpdatePLLDisplay();
    displays.UpdateCLKDISTDisplay();
    displays.UpdateRegisterDisplay();
    displays.UpdateBitDisplay();
}

void Refresh(cPart& part, Tail tail) {
    switch (tail) {
    case Tail::FourThenLoad:
    case Tail::LoadThenFour:
        RefreshFour(part);
        break;
    case Tail::AllThenLoad:
    case Tail::AllThenLoadIfAsked:
        part.UpdateDisplays();
        break;
    case Tail::PllAndClockThenLoad:
        part.upward().displays->UpdatePLLDisplay();
        part.upward().displays->UpdateCLKDISTDisplay();
        break;
    }
}

void Follow(cPart& part, Tail tail) {
    if (tail == Tail::LoadThenFour) LoadChanges(part);
    Refresh(part, tail);
    if (tail == Tail::LoadThenFour) return;
    if (tail == Tail::AllThenLoadIfAsked && !part.upward().options->AutoReloadWithChanges()) return;
    LoadChanges(part);
}

} // namespace

void AllOrNothing(cPart& part, int i, const std::function<void()>& change) {
    const auto pll = part.PLLs.Share(i); // a hook may load another part
    HeldState before(*pll);
    try {
        part.journal().Attempt(pll->ID(), [&] {
            change();
            return true;
        });
    } catch (const ScriptFailure&) {
        throw;
    } catch (...) {
        before.Restore();
        throw;
    }
}

void PanelChange(cPart& part, int i, std::string_view element, Tail tail,
                 const std::function<void()>& change) {
    try {
        AllOrNothing(part, i, change);
    } catch (const ScriptFailure&) {
        Refresh(part, tail);
        throw;
    } catch (const Error& error) {
        TellFailedElement(part, element, error);
    }
    Follow(part, tail);
}

void TellFailedElement(cPart& part, std::string_view element, const Error& error) {
    if (dynamic_cast<const Overflow*>(&error) != nullptr) return;
    const auto* missing = dynamic_cast<const NotFound*>(&error);
    const bool field = missing != nullptr && missing->collection() == part.PrgmBits.name();
    part.upward().messages->Show(field ? "Error... No program bit: " + missing->key() +
                                             " required for: " + std::string(element)
                                       : std::string(element) + ": " + error.what());
}

void TellOnce(cPart& part, PllPanel& panel, std::string_view element, const Error& error) {
    if (panel.told.insert(error.what()).second) TellFailedElement(part, element, error);
}

cPLL& PllOfTag(cPart& part, std::string_view tag, int i) {
    cPLL* pll = part.PLLs.Find(tag);
    return pll != nullptr ? *pll : part.PLLs(i);
}

} // namespace zentrel
