#pragma once

#include <cstdint>

#include "transport/monitor/edge_tape.h"
#include "transport/monitor/record_maker.h"

namespace zentrel {

/// Reads the parallel port's writes as a chip would, level by level, and makes records of them. A
/// word begins with the state ahead of its first clock edge and ends when latch enable falls, a
/// read-back included; a state of pins alone is a record of its own.
class PortTrace {
  public:
    explicit PortTrace(RecordMaker& maker) : maker_(maker) {}

    void Wrote(std::uint16_t address, std::uint8_t value);
    void Read(std::uint16_t address, std::uint8_t value);
    /// Nothing is under way any more: what was begun is complete as it stands.
    void Settle();
    /// What was written meanwhile wasn't heard.
    void Forget();

  private:
    enum class Phase : std::uint8_t {
        Nothing,  // no record is open
        Resting,  // pins and data are set, nothing is clocked
        Shifting, // bits come in
        Latched,  // latch enable stands high behind them
        Done,     // and has fallen
    };
    static constexpr std::size_t kLongestTape = std::size_t{1} << 16;

    void Open();
    void Close();
    void Move(std::uint16_t lines);
    void ShiftIn(bool high);
    bool StartsAnother(std::uint16_t lines) const;
    WireLevels Levels() const;

    RecordMaker& maker_;
    WireRecord record_;
    RecordMaker::Moment end_;
    EdgeTape tape_;
    Phase phase_ = Phase::Nothing;
    std::uint16_t clock_ = 0, data_ = 0, le_ = 0, pinLines_ = 0;
    std::uint16_t address_ = 0;
    bool inverted_ = false;
    int length_ = 0;
    std::uint64_t kept_ = 0; // the bits of a word of up to 64

    bool known_ = false; // the lines were seen since the trace began
    std::uint16_t lines_ = 0, linesBefore_ = 0, moved_ = 0;
    bool whole_ = false; // both ports of the present state were written
    bool readLine_ = true;
    std::uint64_t shift_ = 0;
    BitWord wide_; // instead, for longer words
};

} // namespace zentrel
