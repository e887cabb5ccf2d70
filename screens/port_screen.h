#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "device/upward.h"
#include "form/elements.h"

namespace zentrel {

class cPart;
struct Timers;

/// The Port Setup tab: the route, the port address, the connector pins of the bus lines and of
/// the other pins, and the drawing of the cable with one colour for each function.
class PortScreen : public PortScreenView {
  public:
    /// Options of one pin group: header pins 1 to 8, 10, 11, 12, 14.
    static constexpr int kPinOptions = 12;
    static constexpr int kHeaderPins = 14;
    static constexpr int kDbPins = 25;

    PortScreen(cPart& part, Timers& timers);

    Frame CommunicationSelectFrame;
    std::array<Option, 2> CommMode; ///< "USB", "LPT".

    Frame frameLPTPortSetup, fraPortAdr;
    std::array<Option, 4> optPortAdr; ///< "LPT1", "LPT2", "LPT3", "Other".
    TextBox txtPortAdr;               ///< Hexadecimal; enabled for "Other" alone.
    Label lblAutoReload, lblAutoRelaodUnits;
    TextBox txtAutoReload; ///< Period of the automatic reload, in seconds.

    Frame fraClockBit, fraDataBit, fraLEBit;
    std::array<Option, kPinOptions> optClockBit, optDataBit, optLEBit;

    Frame Frame2;                       ///< "Pin Configuration".
    ElementArray<Frame> fraExternalPin; ///< One for each pin; the caption is its `ID`.
    ElementArray<Option> optPrgmBit;    ///< Option o of row k is number 12k + o.

    // The drawing. Colours are back colours; numbers are pin numbers, 0 isn't used.
    Frame Frame1;
    std::array<Shape, kHeaderPins + 1> Pinheader;
    std::array<Line, kHeaderPins + 1> wires; ///< From header pin to DB-25 pin.
    std::array<Shape, kDbPins + 1> DB1;
    Shape DBConn;
    Label DBlabel, DBlabel2;
    Label Label11; ///< "Input" in the legend, with a sample beside it:
    Shape Label11Sample;
    ScrollBar vscPort;

    /// The rest of the legend, from top to bottom.
    struct LegendEntry {
        std::string_view text;
        Color color;
    };
    static std::span<const LegendEntry> Legend();
    /// The DB-25 pin that a header pin is wired to.
    static int DbPinOf(int headerPin);

    int PinRows() const { return rows_; }

    // What a user does.
    void SelectCommMode(int index);
    void SelectPortAdr(int index);
    /// Enter in `txtPortAdr`: takes a hexadecimal address of up to four digits; any other text
    /// gives way to the address that stands.
    void EnterPortAdr();
    /// Enter in `txtAutoReload`: the period, between 1 and 65 s; it takes effect at once.
    void EnterAutoReload();
    void SelectClockBit(int option);
    void SelectDataBit(int option);
    void SelectLEBit(int option);
    /// `number` is 12 times the row plus the option.
    void SelectPrgmBit(int number);

    // What the program does.
    void UpdatePortDisplay();
    void EnableLPTOptions(bool val) override;
    void ApplyPinLabeling() override;
    void ShowPinOptions() override;
    void UpdatePortDiagram() override;
    void ShowPortConnector();
    /// A row for a pin that the load added.
    void AddPinRow(const cPrgmPin& pin);
    /// Takes all pin rows down.
    void Clear();

    /// Grows when pin rows come or go.
    std::uint64_t layout() const { return layout_; }

  private:
    using Conflicts = std::array<int, kHeaderPins + 1>;

    void MakePinRow(int row);
    void LabelRow(int row, bool input);
    void ShowLine(std::span<Option> options, std::int32_t pin, void (PortScreen::*select)(int));
    void SetUpBridge();
    void WarnOfBursts();
    Conflicts CollectSignals() const;
    void ColorPins(const Conflicts& signals);

    cPart& part_;
    Timers& timers_;
    int rows_ = 0;
    std::uint64_t layout_ = 0;
};

} // namespace zentrel
