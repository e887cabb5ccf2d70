#include "transport/usb_packet.h"

#include <algorithm>

namespace zentrel {

UsbPacket::UsbPacket(std::uint8_t opcode, std::initializer_list<int> payload) {
    bytes_[0] = 2;
    bytes_[1] = opcode;
    for (const int value : payload)
        Append(value);
}

void UsbPacket::Append(int value) {
    if (bytes_[0] >= kLongestPacket) {
        fits_ = false;
        return;
    }
    bytes_[bytes_[0]++] = static_cast<std::uint8_t>(value & 0xFF);
}

void UsbPacket::Append(std::span<const std::uint8_t> bytes) {
    for (const std::uint8_t byte : bytes)
        Append(byte);
}

UsbReply::UsbReply(std::span<const std::uint8_t> packet)
    : size_(std::min(static_cast<int>(packet.size()), kLongestPacket)) {
    if (size_ == 0) return;
    bytes_[0] = static_cast<std::uint8_t>(size_ - 1);
    for (std::size_t i = 2; i < static_cast<std::size_t>(size_); ++i)
        bytes_[i - 1] = packet[i];
}

std::uint8_t* ReceiveBuffer::Room(int count) {
    if (kCapacity - end_ < count) {
        std::copy(bytes_.begin() + begin_, bytes_.begin() + end_, bytes_.begin());
        end_ -= begin_;
        begin_ = 0;
    }
    return bytes_.data() + end_;
}

void ReceiveBuffer::Take(std::uint8_t* to, int count) {
    std::copy_n(bytes_.begin() + begin_, count, to);
    begin_ += count;
    if (begin_ == end_) Clear();
}

void ReceiveBuffer::DropBroken() {
    int at = begin_;
    while (at < end_) {
        const auto here = static_cast<std::size_t>(at);
        const int length = bytes_[here];
        if (length < 3 || length > kLongestPacket || at + length > end_) break;
        if (bytes_[here + 1] != usb::kAcknowledged && bytes_[here + 1] != usb::kRefused) break;
        at += length;
    }
    end_ = at;
}

} // namespace zentrel
