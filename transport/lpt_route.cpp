#include "transport/lpt_route.h"

#include <algorithm>

#include "device/part.h"
#include "transport/transport.h"

namespace zentrel {
namespace {

struct Lines {
    std::int16_t clock, data, le;
};

Lines LinesOf(const cPart& part) {
    return {static_cast<std::int16_t>(part.ClockPositionValue()),
            static_cast<std::int16_t>(part.DataPositionValue()),
            static_cast<std::int16_t>(part.LEPositionValue())};
}

const cPrgmPin* EnabledTrigger(const cPart& part) {
    const cPrgmPin* pin = part.PrgmPins.Find("Trigger");
    return pin != nullptr && pin->Enabled() ? pin : nullptr;
}

// The two states of each bit, from `bitAt(i)` with i counting from the left.
template<typename BitAt>
void FillBits(std::int16_t* state, int count, const Lines& lines, bool inverted, BitAt bitAt) {
    const auto clock = static_cast<std::int16_t>(lines.clock);
    for (int i = 0; i < count; ++i) {
        const std::int16_t data = bitAt(i) ? lines.data : std::int16_t{0};
        const auto high = static_cast<std::int16_t>(clock | data);
        *state++ = inverted ? high : data;
        *state++ = inverted ? static_cast<std::int16_t>(high & lines.data) : high;
    }
}

} // namespace

void FillPortVector(cPart& part, const BitWord& word, bool keepLatch) {
    const int count = part.RegisterLength();
    if (count < 1) return;
    std::vector<std::int16_t>& vector = part.PortVector();
    vector.resize(2 * static_cast<std::size_t>(count) + 3);

    const Lines lines = LinesOf(part);
    const int width = std::max(count, word.BitCount());
    if (width <= 64) {
        const std::uint64_t bits = word.low() << (64 - width);
        FillBits(vector.data(), count, lines, part.InvertClock,
                 [=](int i) { return ((bits << i) >> 63) != 0; });
    } else {
        FillBits(vector.data(), count, lines, part.InvertClock,
                 [&](int i) { return word.Test(width - 1 - i); });
    }
    const cPrgmPin* trigger = EnabledTrigger(part);
    std::int16_t* tail = vector.data() + vector.size() - 3;
    tail[0] = 0;
    tail[1] =
        trigger == nullptr ? lines.le : static_cast<std::int16_t>(lines.le | trigger->Value());
    tail[2] = keepLatch ? lines.le : std::int16_t{0};
}

std::uint16_t DataPort(const cPart& part) {
    return static_cast<std::uint16_t>(part.PortAddress);
}

std::int16_t PinsWithoutTrigger(const cPart& part) {
    const cPrgmPin* trigger = EnabledTrigger(part);
    const int bits = trigger == nullptr ? 0 : trigger->Value();
    return static_cast<std::int16_t>(part.OutputPinValue() & ~bits);
}

namespace {

void SendOver(cPart& part, std::span<const std::int16_t> states, int pins) {
    Transport* transport = part.transport();
    if (transport == nullptr) return;
    PortDriver& port = transport->port();
    const std::uint16_t address = DataPort(part);
    for (const std::int16_t state : states)
        WritePortState(port, address, state | pins);
}

} // namespace

void SendPortVector(cPart& part, std::span<const std::int16_t> states) {
    SendOver(part, states, PinsWithoutTrigger(part));
}

void SendStates(cPart& part, std::span<const std::int16_t> states) {
    SendOver(part, states, 0);
}

bool ReopenPortDriver(cPart& part) {
    Transport* transport = part.transport();
    bool opened = false;
    if (transport != nullptr) {
        PortDriver& port = transport->port();
        if ((port.IsDriverOpened() & 1) != 0) port.CloseTVicPort();
        opened = port.OpenTVicPort() != PortDriver::kOpenFailed;
    }
    part.session().lpt_port_access = opened ? std::int16_t{-1} : std::int16_t{0};
    return opened;
}

void StartPortDriver(cPart& part) {
    Transport* transport = part.transport();
    if (transport != nullptr && (transport->port().IsDriverOpened() & 1) != 0) {
        part.upward().messages->Show("Driver currently opened");
    }
    ReopenPortDriver(part);
}

void StopPortDriver(cPart& part) {
    if (Transport* transport = part.transport()) transport->port().CloseTVicPort();
}

} // namespace zentrel
