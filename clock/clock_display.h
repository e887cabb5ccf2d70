#pragma once

namespace zentrel {

class cPart;

/// Rewrites the elements of all clock blocks from the model, after bringing each block and its PLL
/// into step. A VCO divider or N delay that is bound to a missing field is told and ends the
/// refresh there, with `Updating` still up; any other missing field is told once and costs only
/// the element that shows it.
void UpdateCLKDISTDisplay(cPart& part);

} // namespace zentrel
