#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "transport/bench/board.h"
#include "transport/bridge_library.h"
#include "transport/usb_packet.h"

namespace zentrel {

/// How a simulated bridge misbehaves. Each stays until it is taken back.
struct BridgeFaults {
    std::set<std::uint8_t> refused; ///< Commands that are refused...
    std::uint8_t refusal = 99;      ///< ...with this error code.
    bool deaf = false;              ///< Commands are lost, and so are their replies.
    bool silent = false;            ///< Commands are carried out, their replies are lost.
    int split = 0;                  ///< A receive brings at most so many bytes; 0: all there are.
    bool join = false; ///< A reply waits for the next one, and both come in one receive.
    std::optional<std::uint8_t> wrongOpcode;      ///< Acknowledgements name this command.
    std::optional<int> shortSend;                 ///< At most so many bytes of a packet go out.
    std::optional<std::vector<std::uint8_t>> raw; ///< The reply to every command, byte for byte.
    std::optional<int> unplugAfter; ///< Pulled in the middle of the packet after so many.
};

/// The USB bridge with its firmware, and the library that reaches it, wired to the simulated board.
class SimulatedBridge final : public BridgeLibrary {
  public:
    static constexpr std::int16_t kNotOpen = 1;
    static constexpr std::int16_t kNotAttached = 2;
    static constexpr std::int16_t kTimeOut = 3;

    /// Error codes of the firmware's refusals.
    static constexpr std::uint8_t kUnknownCommand = 1;
    static constexpr std::uint8_t kWrongLength = 2;
    static constexpr std::uint8_t kNotConfigured = 3;
    static constexpr std::uint8_t kNoSuchBuffer = 4;
    static constexpr std::uint8_t kBufferFull = 5;
    static constexpr std::uint8_t kNoSuchPort = 6;

    static constexpr int kBuffers = 4;
    static constexpr std::size_t kBufferBytes = 1024;

    explicit SimulatedBridge(Board& board) : board_(board) {}

    std::int16_t InitUSBInterface() override;
    std::int16_t usbGetError() override { return error_; }
    std::int16_t usbConnected() override { return plugged_ ? 1 : 0; }
    std::int16_t usbSendCmdData(const std::uint8_t* packet, std::int16_t length) override;
    std::int16_t usbReceiveCmdData(std::uint8_t* buffer, std::int16_t max) override;

    /// Plugs the bridge in or pulls it out; what it was told is forgotten when it loses power.
    void SetPlugged(bool value);
    bool plugged() const { return plugged_; }
    BridgeFaults faults;

    /// What the firmware was told since it has power.
    struct State {
        std::uint8_t clock = 0, data = 0, le = 0; ///< Masks of port 0.
        std::uint8_t input = 0;                   ///< The read-back input, mask of port 0.
        std::uint8_t inputs0 = 0, inputs1 = 0;    ///< Pins that are no outputs.
        bool pinsKnown = false;
        int controlBits = 0, dataBits = 0;
        bool formatKnown = false;
        std::uint8_t port0 = 0, port1 = 0; ///< The output ports as last set.
        std::uint8_t triggerPort = 0, triggerMask = 0;
        bool triggerActive = false;
        bool burstMode = false;
        std::uint8_t delay = 10;
        std::array<std::vector<std::uint8_t>, kBuffers> buffers; ///< Inner packets end to end.
    };
    const State& state() const { return state_; }

  private:
    friend struct FirmwareTable;
    using Packet = std::span<const std::uint8_t>;

    void Answer(Packet command);
    /// Carries a command out; 0, or the code of the refusal.
    std::uint8_t Run(Packet command, std::vector<std::uint8_t>& data, bool inside);
    void Queue(std::vector<std::uint8_t> reply);
    void Pull();

    std::uint8_t AddCmd(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t SetWord(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t ExecuteBuffer(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t ClearBuffer(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t Version(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t ConfigPins(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t ConfigFormat(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t SendWord(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t ReadBack(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t SpiDelay(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t TriggerPin(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t TriggerActive(Packet command, std::vector<std::uint8_t>& data);
    std::uint8_t BurstMode(Packet command, std::vector<std::uint8_t>& data);

    bool Ready() const { return state_.pinsKnown && state_.formatKnown; }
    void ShiftOut(Packet bytes);
    void Drive(bool clock, bool data, bool latch, bool trigger);
    bool InputHigh() const;

    Board& board_;
    State state_;
    bool plugged_ = true;
    std::int16_t error_ = kNotOpen;
    std::deque<std::uint8_t> replies_;
    std::vector<std::uint8_t> heldBack_;
};

} // namespace zentrel
