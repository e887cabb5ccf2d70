#include <cstddef>

#include "device/part.h"
#include "screens/port_screen.h"

namespace zentrel {

// The drawing of the cable: which function lies on which pin, and where two meet.

namespace {

// DB-25 pins by header pin. Header pin 0 isn't one.
constexpr std::array<int, PortScreen::kHeaderPins + 1> kWiring{0, 2,  3, 5,  4,  6,  7, 8,
                                                               9, 18, 1, 16, 17, 14, 14};
constexpr int kGroundPin = 18;
constexpr int kFirstBlockedOption = 8;

// What a signal leaves on its pin. A second signal on the same pin makes a number above them all.
enum Code { kNothing = 0, kClock = 1, kData = 2, kLatch = 3, kInput = 9, kOutput = 10 };
constexpr int kSeveral = 11;

constexpr std::array<PortScreen::LegendEntry, 6> kLegend{{
    {"Clock", colors::kCyan},
    {"Data", colors::kGreen},
    {"LE ( Latch Enable )", colors::kMagenta},
    {"Other Pins", colors::kBlue},
    {"Ground", colors::kBlack},
    {"Address Conflict", colors::kRed},
}};

Color ColorOf(int code) {
    switch (code) {
    case kNothing:
        return colors::kUnassigned;
    case kClock:
        return colors::kCyan;
    case kData:
        return colors::kGreen;
    case kLatch:
        return colors::kMagenta;
    case kInput:
        return colors::kYellow;
    case kOutput:
        return colors::kBlue;
    default:
        return colors::kRed;
    }
}

} // namespace

std::span<const PortScreen::LegendEntry> PortScreen::Legend() {
    return kLegend;
}

int PortScreen::DbPinOf(int headerPin) {
    return headerPin < 1 || headerPin > kHeaderPins ? 0
                                                    : kWiring[static_cast<std::size_t>(headerPin)];
}

void PortScreen::ShowPortConnector() {
    const bool show = !part_.session().isUsb();
    DBConn.Visible = DBlabel.Visible = DBlabel2.Visible = show;
    for (Shape& pin : DB1)
        pin.Visible = show;
    for (Line& wire : wires)
        wire.Visible = show;
}

PortScreen::Conflicts PortScreen::CollectSignals() const {
    Conflicts signals{};
    const auto enter = [&signals](std::int32_t pin, int code) {
        if (pin < 1 || pin > kHeaderPins) return;
        int& at = signals[static_cast<std::size_t>(pin)];
        at = at == kNothing ? code : kSeveral;
    };
    const std::int32_t clock = part_.ClockPosition();
    const std::int32_t data = part_.DataPosition();
    const std::int32_t latch = part_.LEPosition();
    if (clock != 0 && data != 0 && latch != 0) {
        enter(clock, kClock);
        enter(data, kData);
        enter(latch, kLatch);
    }
    for (const cPrgmPin& pin : part_.PrgmPins)
        enter(pin.Position(), pin.ReadBack() ? kInput : kOutput);
    return signals;
}

void PortScreen::ColorPins(const Conflicts& signals) {
    for (Shape& pin : DB1)
        pin.BackColor = colors::kUnassigned;
    for (int i = 1; i <= kHeaderPins; ++i) {
        const auto header = static_cast<std::size_t>(i);
        const auto db = static_cast<std::size_t>(kWiring[header]);
        const bool ground = kWiring[header] == kGroundPin && signals[header] == kNothing;
        DB1[db].BackColor = ground ? colors::kBlack : ColorOf(signals[header]);
        Pinheader[header].BackColor = DB1[db].BackColor;
        wires[header].BorderColor = DB1[db].BackColor;
    }
}

void PortScreen::UpdatePortDiagram() {
    ShowPortConnector();
    ColorPins(CollectSignals());
    bool reads = false;
    for (const cPrgmPin& pin : part_.PrgmPins) {
        if (!pin.ReadBack()) continue;
        reads = true;
        const std::int32_t contact = pin.Position() / 100;
        if (contact >= 1 && contact <= kDbPins) {
            DB1[static_cast<std::size_t>(contact)].BackColor = colors::kYellow;
        }
    }
    Label11.Visible = Label11Sample.Visible = reads;
    for (std::size_t o = kFirstBlockedOption; o < kPinOptions; ++o) {
        optClockBit[o].Enabled = optDataBit[o].Enabled = optLEBit[o].Enabled = false;
    }
}

} // namespace zentrel
