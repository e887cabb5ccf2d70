#include "transport/monitor/bridge_trace.h"

#include <algorithm>

namespace zentrel {
namespace {

constexpr std::size_t kPayload = 2;
constexpr std::size_t kReplyData = 3;

// The low `bits` bits of bytes that come most significant first.
BitWord WordOf(std::span<const std::uint8_t> bytes, int bits) {
    BitWord word;
    for (int bit = 0; bit < bits; ++bit) {
        const auto fromEnd = static_cast<std::size_t>(bit / 8);
        if (fromEnd >= bytes.size()) break;
        if (((bytes[bytes.size() - 1 - fromEnd] >> (bit % 8)) & 1) != 0) word.Set(bit, true);
    }
    return word;
}

} // namespace

void BridgeTrace::Sent(Bytes packet, int sent) {
    LeaveUnanswered();
    if (packet.size() < kPayload) return;
    if (open_ && !Continues(packet[1])) Close();
    if (!open_) Open();
    if (record_.opcode == 0) record_.opcode = packet[1];
    Keep(true, packet);
    asked_.assign(packet.begin(), packet.end());
    asWhole_ = sent == static_cast<int>(packet.size());
    awaiting_ = true;
}

// A buffer is cleared, filled and run; everything else stands alone.
bool BridgeTrace::Continues(std::uint8_t opcode) const {
    const bool filling = record_.opcode == usb::kClearBuffer || record_.opcode == usb::kAddCmd;
    return filling && !ran_ && (opcode == usb::kAddCmd || opcode == usb::kExecuteBuffer);
}

void BridgeTrace::Received(Bytes bytes) {
    if (bytes.empty()) {
        LeaveUnanswered();
        return;
    }
    if (!open_) Open();
    Keep(false, bytes);
    end_ = maker_.Now();
    stream_.insert(stream_.end(), bytes.begin(), bytes.end());
    std::size_t at = 0;
    while (at < stream_.size()) {
        const std::size_t length = stream_[at];
        if (length == 0 || length > kLongestPacket) {
            at = stream_.size();
            break;
        }
        if (length > stream_.size() - at) break;
        const std::vector<std::uint8_t> reply(stream_.begin() + static_cast<std::ptrdiff_t>(at),
                                              stream_.begin() +
                                                  static_cast<std::ptrdiff_t>(at + length));
        at += length;
        Take(reply);
    }
    stream_.erase(stream_.begin(), stream_.begin() + static_cast<std::ptrdiff_t>(at));
}

void BridgeTrace::Take(Bytes reply) {
    if (!awaiting_) return;
    const bool known = reply.size() > 2 && asWhole_;
    if (!known || (reply[1] != usb::kAcknowledged && reply[1] != usb::kRefused)) {
        LeaveUnanswered();
        return;
    }
    awaiting_ = false;
    if (reply[1] == usb::kRefused) {
        Note(WireAnswer::Refused);
        record_.opcode = asked_[1];
        record_.code = reply.size() > kReplyData ? reply[kReplyData] : 0;
        NameWord(asked_);
        return;
    }
    Note(reply[2] == asked_[1] ? WireAnswer::Acknowledged : WireAnswer::WrongCommand);
    Run(asked_, reply);
}

void BridgeTrace::LeaveUnanswered() {
    if (!awaiting_) return;
    awaiting_ = false;
    end_ = maker_.Now();
    if (!asWhole_) {
        Note(WireAnswer::NotSent);
        NameWord(asked_);
        return;
    }
    // It may well have been carried out, and only its reply was lost.
    Note(WireAnswer::NoAnswer);
    Run(asked_, {});
}

void BridgeTrace::Opened(std::int16_t error) {
    Settle();
    stream_.clear();
    maker_.Begin(record_, WireRoute::Usb);
    record_.kind = WireKind::Bridge;
    record_.opened = error == 0;
    record_.code = error;
    maker_.Publish(record_, record_.time);
}

void BridgeTrace::Settle() {
    LeaveUnanswered();
    if (open_) Close();
}

void BridgeTrace::Forget() {
    open_ = awaiting_ = false;
    assumed_ = formatKnown_ = portsKnown_ = false;
    ports_ = 0;
    stream_.clear();
    for (auto& buffer : buffers_)
        buffer.clear();
}

void BridgeTrace::Open() {
    maker_.Begin(record_, WireRoute::Usb);
    record_.kind = WireKind::Command;
    open_ = true;
    moved_ = setPorts_ = ran_ = false;
    end_ = record_.time;
    const WireMap& map = maker_.map();
    if (!assumed_ && map.source.usb) {
        // It was set up before anybody listened.
        assumed_ = true;
        pins_.clock = static_cast<std::uint8_t>(map.source.clock);
        pins_.data = static_cast<std::uint8_t>(map.source.data);
        pins_.le = static_cast<std::uint8_t>(map.source.le);
        trigger_ = map.trigger;
        triggerActive_ = trigger_ != 0;
    }
    if (!formatKnown_) {
        controlBits_ = map.source.control;
        dataBits_ = map.source.length - map.source.control;
    }
    start_ = now_ = Levels(false, false, false, false, true);
    touched_ = 0;
    tape_.Start(start_);
}

void BridgeTrace::Close() {
    open_ = false;
    if (record_.kind == WireKind::Command && setPorts_) record_.kind = WireKind::Pins;
    const auto changed = static_cast<std::uint16_t>((start_ ^ now_) & wire::kPins);
    record_.pins = static_cast<std::uint16_t>(now_ & wire::kPins);
    record_.changedPins = changed;
    record_.pulsedPins = static_cast<std::uint16_t>(touched_ & ~changed & wire::kPins);
    if (setPorts_ && !portsKnown_) {
        portsKnown_ = true;
        record_.changedPins =
            static_cast<std::uint16_t>(maker_.map().Outputs() & ~record_.pulsedPins);
    }
    if (moved_) record_.edges = tape_.Finish();
    maker_.Publish(record_, end_);
}

void BridgeTrace::Keep(bool sent, Bytes bytes) {
    const std::size_t length = std::min<std::size_t>(bytes.size(), 255);
    record_.packets.push_back(sent ? 1 : 0);
    record_.packets.push_back(static_cast<std::uint8_t>(length));
    record_.packets.insert(record_.packets.end(), bytes.begin(),
                           bytes.begin() + static_cast<std::ptrdiff_t>(length));
}

void BridgeTrace::Note(WireAnswer answer) {
    record_.answer = std::max(record_.answer, answer);
}

// What the bridge does on a command, as far as its pins and the next commands go.
void BridgeTrace::Run(Bytes packet, Bytes reply) {
    const std::uint8_t opcode = packet[1];
    switch (opcode) {
    case usb::kAddCmd:
        if (packet.size() > 3 && packet[2] < kBuffers) {
            auto& buffer = buffers_[packet[2]];
            buffer.insert(buffer.end(), packet.begin() + 3, packet.end());
        }
        break;
    case usb::kClearBuffer:
        if (packet.size() > 2 && packet[2] < kBuffers) buffers_[packet[2]].clear();
        break;
    case usb::kExecuteBuffer:
        ran_ = true;
        if (packet.size() > 2 && packet[2] < kBuffers) RunBuffer(packet[2]);
        break;
    case usb::kConfigPins:
        if (packet.size() < 10) break;
        pins_ = {packet[3], packet[4], packet[5],
                 static_cast<std::uint16_t>(packet[8] | (packet[9] << 8))};
        assumed_ = true;
        break;
    case usb::kConfigFormat:
        if (packet.size() < 4) break;
        controlBits_ = packet[2];
        dataBits_ = packet[3];
        formatKnown_ = true;
        break;
    case usb::kTriggerPin:
        if (packet.size() > 3)
            trigger_ = static_cast<std::uint16_t>(packet[3] << (8 * (packet[2] & 1)));
        break;
    case usb::kReadBack:
        SendWord(packet.subspan(kPayload));
        ReadBack(reply);
        break;
    default:
        RunInner(packet);
    }
}

void BridgeTrace::RunBuffer(std::size_t number) {
    Bytes rest = buffers_[number];
    while (rest.size() >= kPayload && rest[0] >= kPayload && rest[0] <= rest.size()) {
        RunInner(rest.first(rest[0]));
        rest = rest.subspan(rest[0]);
    }
}

void BridgeTrace::RunInner(Bytes inner) {
    switch (inner[1]) {
    case usb::kSetWord: {
        if (inner.size() < 4) break;
        const unsigned kept = inner[2] == 0 ? ports_ & 0xFF00U : ports_ & 0x00FFU;
        ports_ = static_cast<std::uint16_t>(kept | static_cast<unsigned>(inner[3])
                                                       << (inner[2] == 0 ? 0 : 8));
        setPorts_ = true;
        Drive(false, false, false, false);
        break;
    }
    case usb::kTriggerActive:
        if (inner.size() > kPayload) triggerActive_ = inner[2] != 0;
        break;
    case usb::kSendWord:
        SendWord(inner.subspan(kPayload));
        Drive(false, false, false, false);
        break;
    default:
        break;
    }
}

int BridgeTrace::Bits() const {
    return controlBits_ + dataBits_;
}

void BridgeTrace::SendWord(Bytes bytes) {
    const int bits = Bits();
    record_.kind = WireKind::Word;
    record_.word = WordOf(bytes, bits);
    record_.clocks = bits;
    record_.latched = bits > 0;
    for (int bit = bits - 1; bit >= 0; --bit) {
        const bool high = record_.word.Test(bit);
        Drive(false, high, false, false);
        Drive(true, high, false, false);
        Drive(false, high, false, false);
    }
    Drive(false, false, false, false);
    Drive(false, false, true, true);
}

// The word stays latched while the answer is clocked out of the chip.
void BridgeTrace::ReadBack(Bytes reply) {
    const auto bytes = static_cast<std::size_t>((dataBits_ + 7) / 8);
    if (reply.size() >= kReplyData + bytes && dataBits_ > 0) {
        record_.readBits = dataBits_;
        for (int bit = 0; bit < dataBits_; ++bit) {
            const std::uint8_t byte = reply[kReplyData + static_cast<std::size_t>(bit / 8)];
            if (((byte >> (bit % 8)) & 1) != 0) record_.readBack.Set(bit, true);
        }
    }
    for (int bit = record_.readBits - 1; bit >= 0; --bit) {
        const bool high = record_.readBack.Test(bit);
        Drive(true, false, true, false, high);
        Drive(false, false, true, false, high);
    }
    Drive(false, false, false, false);
}

// A word that never came out is listed all the same.
void BridgeTrace::NameWord(Bytes packet) {
    const bool run = packet[1] == usb::kExecuteBuffer && packet.size() > 2 && packet[2] < kBuffers;
    Bytes rest = run ? Bytes(buffers_[packet[2]]) : packet;
    ran_ = ran_ || run;
    while (rest.size() >= kPayload && rest[0] >= kPayload && rest[0] <= rest.size()) {
        if (rest[1] == usb::kSendWord || rest[1] == usb::kReadBack) {
            record_.kind = WireKind::Word;
            record_.word = WordOf(rest.first(rest[0]).subspan(kPayload), Bits());
        }
        rest = rest.subspan(rest[0]);
    }
}

WireLevels BridgeTrace::Levels(bool clock, bool data, bool latch, bool trigger, bool input) const {
    WireLevels pins = ports_;
    // The trigger pin is an ordinary output unless its function is on.
    if (triggerActive_) pins = trigger ? pins | trigger_ : pins & ~WireLevels{trigger_};
    const WireLevels bus = WireLevels{pins_.clock} | pins_.data | pins_.le;
    WireLevels levels = pins & ~bus & ~WireLevels{pins_.inputs} & wire::kPins;
    if (clock) levels |= wire::kClock;
    if (data) levels |= wire::kData;
    if (latch) levels |= wire::kLatch;
    if (input) levels |= wire::kReadBack;
    return levels;
}

void BridgeTrace::Drive(bool clock, bool data, bool latch, bool trigger, bool input) {
    const WireLevels levels = Levels(clock, data, latch, trigger, input);
    touched_ |= levels ^ now_;
    now_ = levels;
    moved_ = true;
    tape_.Step(levels);
}

} // namespace zentrel
