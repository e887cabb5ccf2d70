#pragma once

#include <cstdint>
#include <span>
#include <vector>

/// The levels of all lines over the time of one record, as compact as an edge a byte.
namespace zentrel {

/// The lines at one moment: the pins in the bits of the route's port mask, and above them the
/// three lines of the bus and the read-back input.
using WireLevels = std::uint32_t;

namespace wire {
inline constexpr WireLevels kPins = 0xFFFF;
inline constexpr WireLevels kClock = 1U << 16;
inline constexpr WireLevels kData = 1U << 17;
inline constexpr WireLevels kLatch = 1U << 18;
inline constexpr WireLevels kReadBack = 1U << 19;
} // namespace wire

/// Writes down levels step by step. A byte holds the four lines and for how many steps, up to
/// eight, they stood; two more follow it where the pins changed.
class EdgeTape {
  public:
    /// Begins anew with what stood before the first step, which counts as one step of its own.
    void Start(WireLevels before) {
        bytes_.clear();
        last_ = before;
        run_ = 1;
        pinsKnown_ = false;
    }

    /// One step at `levels`.
    void Step(WireLevels levels) {
        if (levels == last_ && run_ < kLongestRun) {
            ++run_;
            return;
        }
        Flush();
        last_ = levels;
        run_ = 1;
    }

    /// All that was written down since Start.
    const std::vector<std::uint8_t>& Finish() {
        Flush();
        run_ = 0;
        return bytes_;
    }
    std::size_t size() const { return bytes_.size(); }

    /// Calls `take(levels, steps)` for each run of equal levels, first that of the time before.
    template<typename Take>
    static void Play(std::span<const std::uint8_t> bytes, Take&& take) {
        WireLevels pins = 0;
        for (std::size_t i = 0; i < bytes.size();) {
            const std::uint8_t head = bytes[i++];
            if ((head & kPinsFollow) != 0 && i + 2 <= bytes.size()) {
                pins = bytes[i] | (WireLevels{bytes[i + 1]} << 8);
                i += 2;
            }
            const auto lines = static_cast<WireLevels>(head & kLines) << kLineShift;
            take(pins | lines, (head & kRunMask) + 1);
        }
    }

  private:
    static constexpr int kLongestRun = 8;
    static constexpr std::uint8_t kRunMask = 0x07;
    static constexpr std::uint8_t kLines = 0x78; // read-back, latch enable, data, clock
    static constexpr int kLineShift = 13;        // from a byte's line bits to those of WireLevels
    static constexpr std::uint8_t kPinsFollow = 0x80;

    void Flush() {
        if (run_ == 0) return;
        const auto pins = static_cast<std::uint16_t>(last_ & wire::kPins);
        auto head = static_cast<std::uint8_t>(((last_ >> kLineShift) & kLines) |
                                              static_cast<unsigned>(run_ - 1));
        if (pinsKnown_ && pins == pins_) {
            bytes_.push_back(head);
            return;
        }
        pins_ = pins;
        pinsKnown_ = true;
        bytes_.push_back(static_cast<std::uint8_t>(head | kPinsFollow));
        bytes_.push_back(static_cast<std::uint8_t>(pins & 0xFF));
        bytes_.push_back(static_cast<std::uint8_t>(pins >> 8));
    }

    std::vector<std::uint8_t> bytes_;
    WireLevels last_ = 0;
    int run_ = 0;
    std::uint16_t pins_ = 0;
    bool pinsKnown_ = false;
};

} // namespace zentrel
