#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>

/// The bridge's packets. A packet is a length byte that counts itself, an opcode byte and a
/// payload; it has at most 101 bytes.
namespace zentrel {

inline constexpr int kLongestPacket = 101;

namespace usb {
inline constexpr std::uint8_t kAddCmd = 3;
inline constexpr std::uint8_t kSetWord = 6;
inline constexpr std::uint8_t kExecuteBuffer = 8;
inline constexpr std::uint8_t kClearBuffer = 9;
inline constexpr std::uint8_t kVersion = 10;
inline constexpr std::uint8_t kConfigPins = 12;
inline constexpr std::uint8_t kConfigFormat = 14;
inline constexpr std::uint8_t kSendWord = 16;
inline constexpr std::uint8_t kReadBack = 17;
inline constexpr std::uint8_t kSpiDelay = 19;
inline constexpr std::uint8_t kTriggerPin = 20;
inline constexpr std::uint8_t kTriggerActive = 21;
inline constexpr std::uint8_t kBurstMode = 22;
inline constexpr std::uint8_t kAcknowledged = 240; ///< Reply; byte 2 is the command's opcode.
inline constexpr std::uint8_t kRefused = 241; ///< Reply; byte 2 the opcode, byte 3 an error code.
} // namespace usb

/// A command on its way to the bridge. Lives on the stack; building one never allocates.
class UsbPacket {
  public:
    explicit UsbPacket(std::uint8_t opcode, std::initializer_list<int> payload = {});

    /// Adds the low 8 bits of `value`. A packet that grows beyond the limit is spoilt: it stays so,
    /// and is never sent.
    void Append(int value);
    void Append(std::span<const std::uint8_t> bytes);

    bool fits() const { return fits_; }
    std::uint8_t opcode() const { return bytes_[1]; }
    std::span<const std::uint8_t> bytes() const { return {bytes_.data(), bytes_[0]}; }

  private:
    std::array<std::uint8_t, kLongestPacket> bytes_{};
    bool fits_ = true;
};

/// What `usbGetAck` returns: empty when no usable reply came. Else as many bytes as the packet had:
/// element 0 is the packet's length - 1, element 1 the acknowledged opcode, the reply's data
/// follow, and a 0 ends it.
class UsbReply {
  public:
    UsbReply() = default;
    /// From an acknowledgement packet.
    explicit UsbReply(std::span<const std::uint8_t> packet);

    bool empty() const { return size_ == 0; }
    int size() const { return size_; }
    /// Element `index`; 0 beyond the end.
    std::uint8_t operator[](int index) const {
        return index >= 0 && index < size_ ? bytes_[static_cast<std::size_t>(index)] : 0;
    }

  private:
    std::array<std::uint8_t, kLongestPacket> bytes_{};
    int size_ = 0;
};

/// The bytes that came from the bridge and aren't used yet. The stream isn't aligned to packets.
class ReceiveBuffer {
  public:
    static constexpr int kCapacity = 2048;

    bool empty() const { return begin_ == end_; }
    int size() const { return end_ - begin_; }
    std::uint8_t front() const { return bytes_[static_cast<std::size_t>(begin_)]; }
    /// Room for at least `count` bytes at the end, which `Received` then takes in.
    std::uint8_t* Room(int count);
    void Received(int count) { end_ += count; }
    /// Moves `count` bytes out of the front.
    void Take(std::uint8_t* to, int count);
    void Clear() { begin_ = end_ = 0; }
    /// Drops everything from the first byte on that doesn't belong to a whole reply.
    void DropBroken();

  private:
    std::array<std::uint8_t, kCapacity> bytes_{};
    int begin_ = 0;
    int end_ = 0;
};

} // namespace zentrel
