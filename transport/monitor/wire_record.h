#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "device/bit_word.h"
#include "transport/monitor/edge_tape.h"
#include "transport/monitor/wire_map.h"

namespace zentrel {

enum class WireRoute : std::uint8_t { Lpt, Usb };

/// What a record is about.
enum class WireKind : std::uint8_t {
    Word,    ///< A word that was shifted out, with a read-back behind it perhaps.
    Pins,    ///< Pins, or latch enable, that were set by themselves.
    Command, ///< Another command to the bridge.
    Port,    ///< The port was opened or closed.
    Bridge,  ///< The bridge was opened.
};

/// How the bridge answered; of several commands, the worst of it.
enum class WireAnswer : std::uint8_t {
    None, ///< The parallel port answers nothing.
    Acknowledged,
    WrongCommand, ///< The acknowledgement of another command.
    NoAnswer,
    NotSent, ///< The packet didn't go out whole.
    Refused,
};

/// One thing that happened between the program and a board, as it passed the driver. Nothing in it
/// is text yet: wire_text.h and wire_picture.h read it when someone looks.
struct WireRecord {
    std::uint64_t serial = 0; ///< Counts from 1 for as long as the recorder lives.
    std::chrono::system_clock::time_point time;
    std::chrono::nanoseconds length{0}; ///< From the first write or packet to the last.
    WireRoute route = WireRoute::Lpt;
    WireKind kind = WireKind::Word;
    WireAnswer answer = WireAnswer::None;
    /// The bridge's command, of several the first; where one was refused, that one.
    std::uint8_t opcode = 0;
    /// The code of a refusal; the result of opening.
    std::int16_t code = 0;
    bool opened = false; ///< Of a port or bridge.

    BitWord word;         ///< The last `RegisterLength` bits that were clocked.
    int clocks = 0;       ///< Bits clocked in.
    bool latched = false; ///< Latch enable rose behind them.
    int reg = 0;          ///< Position of the register that the address bits name; 0 for none.
    bool hasBefore = false;
    BitWord before; ///< The word latched into that register the time before.

    int readBits = 0; ///< Bits that came back.
    BitWord readBack; ///< Most significant bit first on the wire.

    // Pins: bits of the route's port mask, the three lines of the bus left out.
    std::uint16_t pins = 0;        ///< As they stood at the end.
    std::uint16_t changedPins = 0; ///< Other than at the start, or seen for the first time.
    std::uint16_t pulsedPins = 0;  ///< Changed and went back.

    std::shared_ptr<const WireMap> map;
    std::vector<std::uint8_t> edges; ///< EdgeTape. Empty when no line moved.
    /// On USB: a 1 for each packet that went out or a 0 for each receive, a length, and the bytes.
    std::vector<std::uint8_t> packets;
};

/// Hears each record when it is complete. Don't add or remove followers from inside the call.
class WireFollower {
  public:
    virtual ~WireFollower() = default;
    virtual void Recorded(const WireRecord& record) = 0;
};

} // namespace zentrel
