#pragma once

#include <array>
#include <set>
#include <string>
#include <vector>

#include "form/elements.h"

namespace zentrel {

/// How many lines, shapes and labels the diagram has: the strides of `linpll`, `shpPLL`, `lblPLL`
/// when they are addressed over all PLLs (element k of PLL i is stride * i + k).
inline constexpr int kPllLines = 21;
inline constexpr int kPllShapes = 8;
inline constexpr int kPllLabels = 17;

/// Places in the repeated elements that the logic shows, hides or colours.
namespace pll_diagram {
inline constexpr int kDoublerBox = 2;      ///< `shpPLL`
inline constexpr int kPrescalerBox = 3;    ///< `shpPLL`
inline constexpr int kDoublerLabel = 6;    ///< `lblPLL`
inline constexpr int kPrescalerLabel = 15; ///< `lblPLL`
inline constexpr int kFractionLabel = 16;  ///< `lblPLL`
inline constexpr int kDoublerGapLine = 16; ///< `linpll`: stands in for an absent doubler
inline constexpr int kOut0Line = 17;       ///< `linpll`
inline constexpr int kOut0PinLine = 18;    ///< `linpll`
inline constexpr int kOut1Line = 19;       ///< `linpll`
inline constexpr int kFoutLine = 20;       ///< `linpll`
} // namespace pll_diagram

/// A limit that the present plan breaks, in words for a tooltip. `element` names the coloured
/// element ("txtVCO"), and `color` is the one that it wears.
struct PlanFault {
    std::string element;
    Color color = colors::kRed;
    std::string text;
};

/// The elements of one PLL's diagram, under the names that scripts use. A tag names the field
/// behind an element, or the PLL; an element without a tag has nothing behind it.
struct PllPanel {
    PllPanel();

    TextBox txtOsc;      ///< Crystal, MHz.
    TextBox txtFpd;      ///< Comparison frequency, kHz.
    TextBox txtVCO;      ///< MHz.
    TextBox txtRCounter; ///< R.
    TextBox txtNCounter; ///< N, with the fraction as decimals.
    TextBox txtFractNum, txtFractDen;
    TextBox txtOUT0_DIV, txtOUT1_DIV;
    TextBox txtOUT0, txtOUT1; ///< MHz.
    TextBox pllManualDivide;  ///< `extra_pll_n_div_1`.

    Spinner SpnFpd, spnRCounter, spnNCounter;
    Spinner SpnFractNum, spnFractDen;
    Spinner SpnOUT0_DIV, SpnOUT1_DIV;

    Label lblDoubler, lblNPrescale, lblPDPol, lblCPGain, lblCPState;
    Label lblPLLOSCBit;
    Label lblPLLOSCinPin, lblPLLFinPin, lblPLLFoutPin, lblPLLCPoutPin, lblPLLOut0Pin, lblPLLOut1Pin;
    Button txtGetPLLBits;

    Shape shpPLLintVCO, shpPLLintOutputs;
    Shape pllSynthDiv;
    Label pllSynthDivLblHigh, pllSynthDivLblLow;
    Shape pllExtraDiv;
    Label pllExtraDivLbl, pllExtraDivVal;

    // Carriers of the range texts, as the part file has them: an empty text is no limit.
    Label lblVCO_Range; ///< Caption: least, tag: most, MHz.
    Label lblOSC_Range; ///< The same, MHz.
    Label lblFpd_Range; ///< The same, kHz.
    Label lblNCheck1;   ///< Caption: kind of N rule, tag: NP_MID_FREQUENCY, MHz with a sign.
    Label lblNCheck2;   ///< Caption: N range at prescaler bit 0, tag: at prescaler bit 1.

    std::array<Line, kPllLines> linpll;
    std::array<Shape, kPllShapes> shpPLL;
    std::array<Label, kPllLabels> lblPLL;

    /// What the last refresh found wrong with the plan.
    std::vector<PlanFault> faults;
    /// Bindings that lead nowhere and that the user was told of, so that no refresh repeats it.
    std::set<std::string> told;
};

} // namespace zentrel
