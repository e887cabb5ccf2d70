#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "device/bit_string.h"
#include "device/part.h"
#include "transport/bench/bench.h"
#include "transport/load_path.h"
#include "transport/lpt_route.h"
#include "transport/transport.h"
#include "transport/usb_bridge.h"
#include "transport/usb_presence.h"

namespace zentrel {

struct MessageRecorder : Messages {
    void Show(std::string_view text, std::string_view title, MessageIcon) override {
        shown.emplace_back(title.empty() ? std::string(text)
                                         : std::string(title) + ": " + std::string(text));
    }
    bool Confirm(std::string_view text, std::string_view title) override {
        shown.push_back(std::string(title) + "? " + std::string(text));
        return true;
    }
    std::optional<std::string> Ask(std::string_view prompt, std::string_view title,
                                   std::string_view proposed) override {
        shown.push_back(std::string(title) + "? " + std::string(prompt) + " <" +
                        std::string(proposed) + ">");
        return answer;
    }
    std::vector<std::string> shown;
    std::optional<std::string> answer;
};

struct StatusRecorder : StatusLine {
    void StatusBar_CommMode(std::string_view text) override { mode = text; }
    void StatusBar_SetString(std::string_view text) override { line = text; }
    std::string mode, line;
};

/// Keeps the packets that went out and the port writes, as text.
struct WireRecorder : WireListener {
    void PortWritten(std::uint16_t address, std::uint8_t value) override {
        writes.emplace_back(address, value);
    }
    void PacketSent(std::span<const std::uint8_t> packet, int) override {
        packets.emplace_back(packet.begin(), packet.end());
    }
    void BytesReceived(std::span<const std::uint8_t>) override { ++receives; }
    void BridgeOpened(std::int16_t) override { ++opens; }
    std::vector<std::pair<int, int>> writes;
    std::vector<std::vector<int>> packets;
    int receives = 0;
    int opens = 0;
};

/// A device on a simulated bench: 24-bit words whose low 4 bits are the address, clock, data and
/// latch enable on pins 1, 2 and 3, outputs "CE" on pin 5 and "TUNE" on pin 10, and the read-back
/// line on status line S3 or pin 7. Register "R2" holds the read-back address field.
struct Rig {
    explicit Rig(std::string_view route = kRouteLpt, int bits = 24) {
        session.CommMode_Select = route;
        Upward upward = Upward::None();
        upward.messages = &messages;
        upward.status = &status;
        part.Connect(upward);
        part.ID = "QVX1024";
        part.PortAddress = 888;
        part.SetRegisterLength(static_cast<std::int16_t>(bits));
        part.ControlLength = 4;
        part.SetClockPosition(1);
        part.SetDataPosition(2);
        part.SetLEPosition(3);
        part.InputPinPositionINI = 1507;
        part.SetInputPinPosition(std::int32_t{part.InputPinPositionINI});
        AddRegister("R0", 0x123450);
        AddRegister("R1", 0xABCDE1);
        AddRegister("R2", 0x000002);
        AddPin("CE", 5);
        AddPin("TUNE", 10);
        AddPin("READ", 1507, true);
        part.ReadbackAddressRegister = "RB_ADDR";
        part.ReadbackAddressRegisterName = "R2";
        part.PrgmBits.Add(std::make_shared<cPrgmBits>(part, "RB_ADDR", "R2", std::int16_t{8},
                                                      std::int16_t{4}, true),
                          "RB_ADDR");
        StartPresence(part);
        StartPortDriver(part);
        messages.shown.clear(); // of a bridge that was set up before its route was chosen
    }

    cRegister& AddRegister(const std::string& id, double value, std::int32_t mask = 0xF) {
        part.Registers.Add(std::make_shared<cRegister>(part, id, mask, value, false), id);
        part.Registers(id).SetChange(false);
        return part.Registers(id);
    }
    cPrgmPin& AddPin(const std::string& id, int position, bool readBack = false) {
        part.PrgmPins.Add(std::make_shared<cPrgmPin>(part, id, readBack), id);
        part.PrgmPins(id).SetPosition(std::int32_t{position});
        return part.PrgmPins(id);
    }
    /// Hears the drivers from here on.
    WireRecorder& Listen() {
        wire = {};
        transport.wire().Remove(wire);
        transport.wire().Add(wire);
        return wire;
    }

    const Board& board() const { return bench.board; }
    /// What was latched, as "R0=123450".
    std::vector<std::string> Latched() const {
        std::vector<std::string> words;
        for (const LatchedWord& word : bench.board.history()) {
            std::string bits = word.word.ToText(part.RegisterLength());
            words.push_back(word.registerName + "=" + ConvertBinaryToHex(bits));
        }
        return words;
    }

    Session session;
    cPart part{session};
    SimulatedBench bench{part};
    MessageRecorder messages;
    StatusRecorder status;
    WireRecorder wire;
    Transport transport{part, bench.drivers()};
};

} // namespace zentrel
