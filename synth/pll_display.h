#pragma once

namespace zentrel {

class cPart;

/// Rewrites the panels of all PLLs from the model and checks their plans, in the order of `PLLs`.
/// A linked block's `UpdateCLKValues` runs on the way, and an R of 0 becomes 1; nothing else in
/// the model changes. A polarity field that isn't there is told at every refresh, which ends it;
/// another name that leads nowhere is told once and leaves its element as it is.
void UpdatePLLDisplay(cPart& part);

} // namespace zentrel
