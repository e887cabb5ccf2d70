#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/transport/rig.h"

/// What every port driver has to keep. A test program includes this once and instantiates it with
/// its rows.
namespace zentrel {

/// A driver with a board at its far end, at the device's address.
struct PortUnderTest {
    virtual ~PortUnderTest() = default;
    virtual PortDriver& port() = 0;
    virtual void BreakOpening() = 0;
    Rig rig;
};

struct PortRow {
    const char* name;
    std::function<std::unique_ptr<PortUnderTest>()> make;
};

class PortDriverContract : public ::testing::TestWithParam<PortRow> {
  protected:
    std::unique_ptr<PortUnderTest> made = GetParam().make();
    PortDriver& port = made->port();
    const Board& board = made->rig.bench.board;
};

TEST_P(PortDriverContract, opens_closes_and_says_so) {
    port.CloseTVicPort();
    port.CloseTVicPort();
    EXPECT_EQ(port.IsDriverOpened() & 1, 0);
    EXPECT_NE(port.OpenTVicPort(), PortDriver::kOpenFailed);
    EXPECT_EQ(port.IsDriverOpened() & 1, 1);
    port.CloseTVicPort();
    made->BreakOpening();
    EXPECT_EQ(port.OpenTVicPort(), PortDriver::kOpenFailed);
    EXPECT_EQ(port.IsDriverOpened() & 1, 0);
}

TEST_P(PortDriverContract, a_written_byte_stands_on_the_lines_and_reads_back) {
    for (const int value : {0x00, 0x55, 0xAA, 0xFF}) {
        port.WritePort(888, static_cast<std::uint8_t>(value));
        EXPECT_EQ(port.ReadPort(888), value);
    }
    port.WritePort(888, 0);
    port.WritePort(890, 0xB ^ 0xF);
    EXPECT_EQ(board.levels(), PinBit(10) | PinBit(11) | PinBit(12) | PinBit(14));
    EXPECT_EQ(port.ReadPort(890) & 0xF, 0xB ^ 0xF);
    port.WritePort(888, 0x18);
    EXPECT_EQ(board.levels() & 0xFF, PinBit(3) | PinBit(5)) << "data lines 2 and 3 cross";
}

TEST_P(PortDriverContract, a_closed_driver_moves_nothing) {
    port.WritePort(888, 0x10);
    port.CloseTVicPort();
    port.WritePort(888, 0);
    EXPECT_TRUE(board.PinHigh(5));
    EXPECT_NO_THROW(port.ReadPort(889));
    port.OpenTVicPort();
    port.WritePort(888, 0);
    EXPECT_FALSE(board.PinHigh(5));
}

} // namespace zentrel
