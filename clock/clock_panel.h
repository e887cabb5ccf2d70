#pragma once

#include <array>

#include "form/elements.h"

namespace zentrel {

/// Rows of the channel table: a block may have more channels, but no more can be shown.
inline constexpr int kClockChannels = 8;

/// Sizes of the template's drawing families. Element k of block n is element size * n + k of the
/// window's arrays `lblCLK`, `shpCLK` and `LineCLK`.
inline constexpr int kClockLabels = 39;
inline constexpr int kClockShapes = 27;
inline constexpr int kClockLines = 47;

/// Numbers k of the template's labels that something rests on.
namespace clk_label {
inline constexpr int kVcoAtMux = 0, kReference = 1, kFin = 2, kExternalSign = 3, kReferenceSign = 4,
                     kGlobalDelay = 5, kPll = 6, kExternalFilter = 7, kInternalFilter = 8, kVco = 9,
                     kVcoSign = 10, kInputMux = 11, kFirstHeader = 12, kLastHeader = 15,
                     kFirstMHz = 16, kVcoDivider = 24, kVcoMHz = 25, kExternalSource = 26,
                     kOscIn = 27, kExternalMHz = 28, kReferenceMHz = 29, kR3 = 30, kC4 = 33,
                     kReadoutR = 34, kReadoutN = 36, kDivided = 37, kDividedMHz = 38;
} // namespace clk_label

/// The same for shapes. The three terminals are the input mux's inputs.
namespace clk_shape {
inline constexpr int kReference = 1, kVcoTerminal = 2, kExternalTerminal = 3,
                     kReferenceTerminal = 4, kInputMux = 5, kExternalSource = 9, kGlobalDelay = 10,
                     kFirstHeaderMark = 11, kLastHeaderMark = 14, kVco = 15, kLoopFilter = 16,
                     kInternalFilter = 17, kPll = 18, kInputBuffer = 19, kVcoDivider = 20,
                     kVcoBuffer = 21, kFirstRowJoin = 22, kLastRowJoin = 25, kRowBeyond = 26;
} // namespace clk_shape

/// The same for lines.
namespace clk_line {
inline constexpr int kMuxPointer = 0, kVcoToDivider = 3, kDividerToMux = 4, kExternalOut = 5,
                     kExternalToMux = 6, kMuxOut = 7, kMuxUpper = 13, kMuxLower = 14,
                     kReferenceToMux = 15, kReferenceOut = 16, kReferenceDirect = 17, kGap = 18,
                     kBus = 20, kFirstRow = 31;
} // namespace clk_line

/// One row of the channel table: window element n * 8 + c for channel c of block n.
struct ClockChannelRow {
    TextBox chDivText;     ///< The divider. Grey when the mux passes it by.
    Spinner chDivSpnFpd;   ///< Steps the divider.
    ListBox divCB_CDelay;  ///< The delay. Grey when the mux passes it by.
    ListBox divCB_CMux;    ///< "Bypassed", "Divided", "Delayed" or both in other words.
    ListBox divCB_od;      ///< 0 "Disabled", 1 "Enabled". Grey when disabled.
    TextBox divCHtxt_freq; ///< The output frequency in MHz; empty when disabled, "?" for none.
    Label lblCLKid;        ///< "CLKout" and the channel number.
};

/// The inputs among which a block's input mux chooses.
enum class ClockInput { None, VCO, External, Reference };

/// The entry boxes of a block's tab.
enum class ClockBox { RefOSC, VCO, ExtSRC, InputDiv, ChannelDiv };

/// The rectangle around a box that was typed in and isn't applied: 4 pixels wider and higher.
struct ClockEditMarker : Element {
    ClockEditMarker() { Visible = false; }
    ClockBox box = ClockBox::RefOSC;
    int channel = 0; ///< For ChannelDiv.
};

/// Where a display mode only moves parts of the drawing: flags for the view that draws it.
struct ClockLayout {
    bool finAtMux = true;      ///< "Fin" and the mux's lines stand beside the external source.
    bool gapBridged = false;   ///< One line spans the place of the absent input mux.
    bool dividerMoved = false; ///< The VCO divider fills the room of the external source.
    bool rowsUp = false;       ///< Nothing stands above the channels, so they move up and left.
};

/// The elements of one block's tab. The frequency arithmetic reads three of them: the selection of
/// `cbClkInputMux`, the mark and visibility of `CLK_VCODIV_bypass`, and the visibility of
/// `CLKtxt_InputDiv`. A tag names the program bit, or the PLL, that an element is bound to.
struct ClockPanel {
    ClockPanel();

    ListBox cbClkInputMux; ///< 0 "VCO", 1 "extVCO", 2 "Distribution", 3 "OSCin"; -1 none.
    TextBox txtCLK_RefOSCfreq, txtCLK_ExtSRCfreq, txtCLK_VCOfreq; ///< MHz.
    ListBox CB_CLK_Delay_N, CB_CLK_Delay_R;                       ///< The global delays.
    TextBox CLKtxt_InputDiv;                                      ///< The VCO divider.
    Spinner CLKspn_InputDiv;
    CheckBox CLK_VCODIV_bypass;     ///< A user control: no refresh sets its mark.
    TextBox CLKtxt_InputDivOutFreq; ///< MHz behind the VCO divider.
    Label clkDist_R_value, clkDist_N_value, clkDist_PDF_value; ///< Readouts of the linked PLL.
    Label clkdist_R3, clkdist_R4, clkdist_C3, clkdist_C4;      ///< The internal loop filter.

    std::array<ClockChannelRow, kClockChannels> channels;
    std::array<Label, kClockLabels> lblCLK;
    std::array<Shape, kClockShapes> shpCLK;
    std::array<Line, kClockLines> LineCLK;

    ClockEditMarker marker;
    ClockInput pointer = ClockInput::None; ///< The terminal that the input mux points at.
    ClockLayout layout;
};

} // namespace zentrel
