#pragma once

namespace zentrel {

class cPart;
class cPLL;

// The checks on PLL `pll`'s plan, on the texts of its boxes: each colours its element white, red or
// yellow, and adds what it found to `panel.faults`. No value changes. A limit or prescaler text
// that is no number checks nothing. They throw NotFound when the prescaler's field is missing.
void CheckVCORange(cPLL& pll);
void CheckCrystalRange(cPLL& pll);
void CheckComparisonRange(cPLL& pll);
/// The prescaler box is red when the VCO is too fast for the prescaler's setting.
void CheckPrescaler(const cPart& part, cPLL& pll);
/// Whether prescaler and counters can make N: "SINGLE", "DUAL" and "QUAD", with a margin digit.
void CheckNRule(cPLL& pll);
/// The range of N at the prescaler's setting: red below it, yellow inside.
void CheckNRange(const cPart& part, cPLL& pll);

} // namespace zentrel
