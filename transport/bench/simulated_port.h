#pragma once

#include <cstdint>
#include <optional>

#include "transport/bench/board.h"
#include "transport/port_driver.h"

namespace zentrel {

/// A parallel port whose cable ends at the simulated board. It sees writes to its data and control
/// registers and answers reads of its three registers, with the inversions of the real one; other
/// addresses are empty.
class SimulatedPort final : public PortDriver {
  public:
    explicit SimulatedPort(Board& board) : board_(board) {}

    std::int16_t IsDriverOpened() override { return opened_ ? 1 : 0; }
    std::int16_t OpenTVicPort() override;
    void CloseTVicPort() override { opened_ = false; }
    void WritePort(std::uint16_t address, std::uint8_t value) override;
    std::uint8_t ReadPort(std::uint16_t address) override;

    /// The base address; without one it is the address that the device names.
    void SetBase(std::optional<std::uint16_t> base) { base_ = base; }
    /// Whether the driver can be opened at all.
    void SetUsable(bool value);
    /// Whether the cable is plugged into the board.
    void SetCable(bool value) { cable_ = value; }
    /// Pulls the cable once `writes` more bytes were written.
    void PullCableAfter(int writes) { pullAfter_ = writes; }

    std::uint8_t data() const { return data_; }
    std::uint8_t control() const { return control_; }

  private:
    std::uint16_t Base() const;
    std::uint8_t Status() const;
    bool CableHolds();

    Board& board_;
    std::optional<std::uint16_t> base_;
    std::optional<int> pullAfter_;
    bool usable_ = true;
    bool opened_ = false;
    bool cable_ = true;
    std::uint8_t data_ = 0;
    std::uint8_t control_ = 0xB; ///< All four lines low at the connector.
};

} // namespace zentrel
