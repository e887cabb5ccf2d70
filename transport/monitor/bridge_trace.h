#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "transport/monitor/edge_tape.h"
#include "transport/monitor/record_maker.h"
#include "transport/usb_packet.h"

namespace zentrel {

/// Reads the packets to the bridge and its replies, and makes records of them: one command and its
/// answer, or all commands of one buffer run. What the bridge then does on its pins follows from
/// what it was told, so the edges of a word are those of its packet; each takes one step, whatever
/// time the bridge takes for it.
class BridgeTrace {
  public:
    explicit BridgeTrace(RecordMaker& maker) : maker_(maker) {}

    /// `sent` of the packet's bytes went out.
    void Sent(std::span<const std::uint8_t> packet, int sent);
    /// One receive; empty when nothing came.
    void Received(std::span<const std::uint8_t> bytes);
    void Opened(std::int16_t error);
    /// Nothing is under way any more: what was begun is complete as it stands.
    void Settle();
    /// What went out meanwhile wasn't heard.
    void Forget();

  private:
    using Bytes = std::span<const std::uint8_t>;
    static constexpr std::size_t kBuffers = 4;

    struct Pins {
        std::uint8_t clock = 0, data = 0, le = 0;
        std::uint16_t inputs = 0; // no outputs
    };

    void Open();
    void Close();
    bool Continues(std::uint8_t opcode) const;
    void Keep(bool sent, Bytes bytes);
    void Take(Bytes reply);
    void Note(WireAnswer answer);
    void LeaveUnanswered();

    void Run(Bytes packet, Bytes reply);
    void RunInner(Bytes inner);
    void RunBuffer(std::size_t number);
    void SendWord(Bytes bytes);
    void ReadBack(Bytes reply);
    void NameWord(Bytes packet);
    void Drive(bool clock, bool data, bool latch, bool trigger, bool input = true);
    WireLevels Levels(bool clock, bool data, bool latch, bool trigger, bool input) const;
    int Bits() const;

    RecordMaker& maker_;
    WireRecord record_;
    RecordMaker::Moment end_;
    EdgeTape tape_;
    bool open_ = false;
    bool moved_ = false;
    bool setPorts_ = false;
    bool ran_ = false;
    WireLevels start_ = 0, now_ = 0, touched_ = 0;

    std::vector<std::uint8_t> asked_; // the packet whose reply is awaited
    bool awaiting_ = false;
    bool asWhole_ = true;
    std::vector<std::uint8_t> stream_; // replies, not aligned to receives

    // What the bridge knows, as far as it was heard.
    bool assumed_ = false, formatKnown_ = false, portsKnown_ = false;
    Pins pins_;
    int controlBits_ = 0, dataBits_ = 0;
    std::uint16_t ports_ = 0; // port 1 in the upper byte
    std::uint16_t trigger_ = 0;
    bool triggerActive_ = false;
    std::array<std::vector<std::uint8_t>, kBuffers> buffers_;
};

} // namespace zentrel
