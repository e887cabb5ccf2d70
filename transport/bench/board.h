#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "device/bit_word.h"
#include "device/text.h"

/// The simulated bench: a board that hangs on the three wires and believes nothing but their
/// levels.
namespace zentrel {

class cPart;

enum class BoardRoute { Lpt, Usb };

/// Levels of the board's 14-pin header: bit n - 1 is pin n.
using PinLevels = std::uint32_t;

constexpr PinLevels PinBit(int pin) {
    return pin >= 1 && pin <= 14 ? PinLevels{1} << (pin - 1) : 0;
}

/// A word that the chip latched.
struct LatchedWord {
    std::uint64_t serial = 0; ///< Counts from 1 for as long as the board lives.
    std::chrono::system_clock::time_point time;
    BoardRoute route = BoardRoute::Lpt;
    /// The register that the word's address bits name; empty when they name none or several.
    std::string registerName;
    BitWord word;         ///< What stood in the shift register: the last `RegisterLength` bits.
    int clocks = 0;       ///< Bits shifted since the latch before.
    PinLevels pins = 0;   ///< The header at that moment, the three serial lines left out.
    bool trigger = false; ///< The pin named "Trigger" was high.
};

/// A run of the history, oldest first.
class LatchedWords {
  public:
    using Iterator = std::deque<LatchedWord>::const_iterator;

    LatchedWords(const Iterator& begin, const Iterator& end) : begin_(begin), end_(end) {}
    Iterator begin() const { return begin_; }
    Iterator end() const { return end_; }
    std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
    bool empty() const { return begin_ == end_; }
    const LatchedWord& front() const { return *begin_; }
    const LatchedWord& back() const { return *(end_ - 1); }

  private:
    Iterator begin_;
    Iterator end_;
};

/// The chip on its board: a shift register with a latch, and registers behind it that can be read
/// back. Which pins it hangs on, its clock phase and its registers' address bits are those of the
/// loaded device; everything else it learns from the wires.
///
/// It shifts on the device's clock edge while latch enable is low, taking the data level that stood
/// before the edge, and latches when latch enable rises; a latch pulse without a clock before it
/// changes nothing. While latch enable is high a rising clock puts the next data bit of the
/// register selected for read-back on the read-back line, most significant first.
class Board {
  public:
    static constexpr std::size_t kHistory = 100000;

    explicit Board(const cPart& device);

    const cPart& device() const { return device_; }

    /// New levels of the whole header, as the far end of the cable of `route` sets them.
    void Drive(PinLevels levels, BoardRoute route);
    PinLevels levels() const { return levels_; }
    bool PinHigh(int pin) const { return (levels_ & PinBit(pin)) != 0; }
    /// The read-back line; high while nothing is shifted out.
    bool readBackLine() const { return readBackLine_; }

    // What was latched: the last 100,000 words, oldest first.
    const std::deque<LatchedWord>& history() const { return history_; }
    /// The serial number of the newest word, 0 before the first. It never falls.
    std::uint64_t newest() const { return newest_; }
    /// The words after `serial`, oldest first: what a display that showed up to `serial` lacks.
    /// Valid until the next word is latched.
    LatchedWords Since(std::uint64_t serial) const;
    /// Empties the history; serial numbers go on.
    void ForgetHistory() { history_.clear(); }

    /// What a register holds: the word latched into it last, 0 before the first.
    BitWord Content(std::string_view registerName) const;

    /// Where the times come from; the system's clock unless told otherwise.
    void SetClock(std::function<std::chrono::system_clock::time_point()> now) {
        now_ = std::move(now);
    }

  private:
    // The device's settings that the wiring follows from.
    struct Settings {
        std::int32_t clock = 0, data = 0, le = 0;
        bool usb = false;
        bool operator==(const Settings&) const = default;
    };

    void FollowDevice();
    void Shift(bool high);
    void Latch(BoardRoute route);
    std::string RegisterOf(const BitWord& word) const;
    void SelectReadBack(const LatchedWord& latched);

    const cPart& device_;
    Settings settings_;
    PinLevels clockPin_ = 0, dataPin_ = 0, lePin_ = 0;

    PinLevels levels_ = 0;
    BitWord shift_;
    int clocks_ = 0;

    std::string deviceId_;
    std::unordered_map<std::string, BitWord, NoCaseHash, NoCaseEqual> contents_;
    BitWord out_;
    int outBits_ = 0;
    bool readBackLine_ = true;

    std::deque<LatchedWord> history_;
    std::uint64_t newest_ = 0;
    std::function<std::chrono::system_clock::time_point()> now_;
};

} // namespace zentrel
