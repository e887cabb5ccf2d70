#pragma once

#include <functional>
#include <string_view>

#include "device/errors.h"
#include "synth/pll.h"

namespace zentrel {

/// Runs a change of PLL `i` and its linked block: all of it or, when it throws, none. A failing
/// hook keeps what was written before it.
void AllOrNothing(cPart& part, int i, const std::function<void()>& change);

/// What follows a change on the panel. "Four" are the PLL, clock, register and bit displays.
enum class Tail {
    FourThenLoad,
    LoadThenFour,
    AllThenLoad,
    AllThenLoadIfAsked, ///< Loads only while `mnuAutoReloadChange` is checked.
    PllAndClockThenLoad,
};

/// A change that an element of PLL `i`'s panel asks for. One that fails changes nothing, and a
/// name that leads nowhere is told; the tail follows in any case, so that the boxes show the
/// model.
void PanelChange(cPart& part, int i, std::string_view element, Tail tail,
                 const std::function<void()>& change);

/// Tells that `element` couldn't be served: the missing field, or the reason. A number that fits
/// nowhere is silent, the boxes show what stands.
void TellFailedElement(cPart& part, std::string_view element, const Error& error);

/// The same, once for each name or reason as long as the panel stands: a refresh comes often.
void TellOnce(cPart& part, PllPanel& panel, std::string_view element, const Error& error);

/// The PLL that an element's tag names; the one at position `i` when it names none.
cPLL& PllOfTag(cPart& part, std::string_view tag, int i);

} // namespace zentrel
