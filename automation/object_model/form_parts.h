#pragma once

#include <span>

#include "automation/object_model/element.h"

/// The parts of `frmPart`'s class: what the window declares, and its elements screen by screen.
namespace zentrel::objects {

std::vector<Member> FormFields();
std::vector<Member> FormRoutines();

std::span<const ElementRow> FrameElements(); ///< Tabs, status bar, timers.
std::span<const ElementRow> MenuElements();
std::span<const ElementRow> PortElements();
std::span<const ElementRow> RegistersElements();
std::span<const ElementRow> BitsElements();
std::span<const ElementRow> BurstElements();
std::span<const ElementRow> PllElements();
std::span<const ElementRow> ClockElements();

/// The other forms, which `frmPart` hands out under their names.
std::vector<Member> DialogMembers();

} // namespace zentrel::objects
