#pragma once

#include <string>
#include <string_view>

#include "form/elements.h"

/// The two options of automatic loading, and the timer's period.
namespace zentrel {

class cPart;

inline constexpr int kAutoReloadInterval = 10000; ///< At start, in milliseconds.

/// What a text typed as the period becomes, and the interval that follows, in milliseconds.
struct AutoReloadPeriod {
    std::string text;
    int interval;
};

/// A text that is no number or above 65 becomes "65", one of 0 or less becomes "1". The interval is
/// never below 1 ms.
AutoReloadPeriod ReadAutoReloadPeriod(std::string_view seconds);

// The handlers. Each does nothing while `Updating`.
/// Enter in the period's box.
void txtAutoReload_Enter(cPart& part, TextBox& box, Timer& timer);
/// "AutoReload on Interval": the check mark changes, and the timer follows it.
void mnuAutoReload_Click(cPart& part, MenuItem& entry, Timer& timer);
/// "AutoReload with Changes": the check mark changes.
void mnuAutoReloadChange_Click(cPart& part, MenuItem& entry);

/// A tick: loads all. A failed load never stops the timer.
void tmrAutoReload_Timer(cPart& part);

} // namespace zentrel
