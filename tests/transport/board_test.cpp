#include "transport/bench/board.h"

#include <gmock/gmock.h>

#include "rig.h"

namespace zentrel {
namespace {

// Drives the header by hand: clock on pin 1, data on pin 2, latch enable on pin 3.
struct Wires {
    explicit Wires(Board& board) : board(board) {}
    void To(int clock, int data, int latch, PinLevels others = 0) {
        board.Drive((clock ? PinBit(1) : 0) | (data ? PinBit(2) : 0) | (latch ? PinBit(3) : 0) |
                        others,
                    BoardRoute::Lpt);
    }
    void Bit(int data) {
        To(0, data, 0);
        To(1, data, 0);
    }
    Board& board;
};

TEST(Board, takes_the_data_level_that_stood_before_the_clock_edge) {
    Rig rig(kRouteLpt, 3);
    Wires wires(rig.bench.board);
    wires.Bit(1);
    wires.To(0, 0, 0);
    wires.To(1, 1, 0); // data changes with the edge: too late
    wires.Bit(1);
    wires.To(0, 0, 0);
    wires.To(0, 0, 1);
    EXPECT_EQ(rig.board().history().back().word, BitWord(0b101));
}

TEST(Board, keeps_the_last_bits_of_a_word_and_counts_the_clocks) {
    Rig rig(kRouteLpt, 3);
    Wires wires(rig.bench.board);
    for (const int bit : {1, 0, 1, 1})
        wires.Bit(bit);
    wires.To(0, 0, 1);
    wires.To(0, 0, 0);
    wires.To(0, 0, 1); // a latch pulse alone loads nothing
    ASSERT_EQ(rig.board().newest(), 1U);
    EXPECT_EQ(rig.board().history().back().word, BitWord(0b011));
    EXPECT_EQ(rig.board().history().back().clocks, 4);
}

TEST(Board, names_the_register_by_its_address_bits_if_it_can) {
    Rig rig;
    const auto nameOf = [&](std::int32_t word) {
        LoadValue(rig.part, word);
        return rig.board().history().back().registerName;
    };
    rig.AddRegister("WIDE", 0x53, 0xFF);
    EXPECT_EQ(nameOf(0xFFFFF1), "R1");
    EXPECT_EQ(nameOf(0x000053), "WIDE") << "more address bits decide";
    EXPECT_EQ(nameOf(0x000063), "") << "no register of that address";
    rig.AddRegister("TWIN", 0x000001);
    EXPECT_EQ(nameOf(0xFFFFF1), "") << "two of that address";
    rig.part.Registers.Clear();
    rig.AddRegister("ONLY", 0, 0);
    EXPECT_EQ(nameOf(0x123456), "ONLY");
}

TEST(Board, a_display_asks_for_what_it_lacks_and_memory_stays_flat) {
    Rig rig(kRouteLpt, 1);
    rig.bench.board.SetClock([n = 0]() mutable {
        return std::chrono::system_clock::time_point(std::chrono::seconds(++n));
    });
    for (std::size_t i = 0; i < Board::kHistory + 10; ++i)
        LoadValue(rig.part, 1);
    const Board& board = rig.board();
    EXPECT_EQ(board.newest(), Board::kHistory + 10);
    EXPECT_EQ(board.history().size(), Board::kHistory);
    EXPECT_EQ(board.history().front().serial, 11U);
    EXPECT_EQ(board.Since(board.newest()).size(), 0U);
    EXPECT_EQ(board.Since(board.newest() + 5).size(), 0U);
    EXPECT_EQ(board.Since(3).size(), Board::kHistory) << "what is gone is gone";
    const auto recent = board.Since(board.newest() - 2);
    ASSERT_EQ(recent.size(), 2U);
    EXPECT_EQ(recent.front().serial, board.newest() - 1);
    EXPECT_LT(recent.front().time, recent.back().time);
    rig.bench.board.ForgetHistory();
    EXPECT_TRUE(board.Since(0).empty());
    LoadValue(rig.part, 1);
    EXPECT_EQ(board.Since(0).front().serial, Board::kHistory + 11);
}

TEST(Board, another_device_finds_an_empty_chip) {
    Rig rig;
    LoadAll(rig.part);
    EXPECT_EQ(rig.board().Content("r1"), BitWord(0xABCDE1));
    rig.part.ID = "QVX2048";
    LoadRegister(rig.part, "R0");
    EXPECT_EQ(rig.board().Content("R1"), BitWord());
}

TEST(Board, a_cable_pulled_in_the_middle_of_a_word_latches_nothing) {
    Rig rig;
    rig.bench.port.PullCableAfter(60);
    LoadAll(rig.part);
    EXPECT_EQ(rig.board().newest(), 0U);
    rig.bench.port.SetCable(true);
    LoadRegister(rig.part, "R1");
    EXPECT_THAT(rig.Latched(), ::testing::ElementsAre("R1=ABCDE1"));
}

// The bridge's firmware.

TEST(Firmware, refuses_what_it_cannot_do) {
    Rig rig(kRouteUsb);
    rig.bench.PullBridge();
    rig.bench.bridge.SetPlugged(true);
    InitUSBInterface(rig.part);
    const auto refusal = [&](UsbPacket packet) -> int {
        rig.messages.shown.clear();
        usbCommand(rig.part, packet);
        return rig.messages.shown.empty() ? 0 : rig.messages.shown[0].back() - '0';
    };
    EXPECT_EQ(refusal(UsbPacket(99)), SimulatedBridge::kUnknownCommand);
    EXPECT_EQ(refusal(UsbPacket(usb::kSetWord, {0, 1})), SimulatedBridge::kUnknownCommand);
    EXPECT_EQ(refusal(UsbPacket(usb::kVersion, {1})), SimulatedBridge::kWrongLength);
    EXPECT_EQ(refusal(UsbPacket(usb::kSendWord, {1, 2, 3})), SimulatedBridge::kNotConfigured);
    EXPECT_EQ(refusal(UsbPacket(usb::kClearBuffer, {9})), SimulatedBridge::kNoSuchBuffer);
    EXPECT_EQ(refusal(UsbPacket(usb::kTriggerPin, {2, 1})), SimulatedBridge::kNoSuchPort);
    EXPECT_EQ(refusal(UsbPacket(usb::kAddCmd, {0, 4, 6, 0})), SimulatedBridge::kWrongLength);
    EXPECT_EQ(refusal(UsbPacket(usb::kAddCmd, {0, 2, 10})), SimulatedBridge::kUnknownCommand);
    usbSetupDevice(rig.part);
    EXPECT_EQ(refusal(UsbPacket(usb::kSendWord, {1, 2})), SimulatedBridge::kWrongLength);
    int added = 0;
    while (refusal(UsbPacket(usb::kAddCmd, {0, 4, 6, 0, 1})) == 0)
        ++added;
    EXPECT_EQ(added, static_cast<int>(SimulatedBridge::kBufferBytes / 4));
    EXPECT_EQ(rig.board().newest(), 0U);
}

TEST(Firmware, a_buffer_runs_only_when_it_is_told_to_and_as_often) {
    Rig rig(kRouteUsb);
    usbSetupDevice(rig.part);
    usbAddCmd(rig.part, 1, usbMakeCmd_Word(rig.part, usb::kSendWord, BitWord(0x123450)));
    EXPECT_EQ(rig.board().newest(), 0U);
    usbExecuteCmdBuffer(rig.part, 1);
    usbExecuteCmdBuffer(rig.part, 1);
    usbExecuteCmdBuffer(rig.part, 0);
    usbClearCmdBuffer(rig.part, 1);
    usbExecuteCmdBuffer(rig.part, 1);
    EXPECT_EQ(rig.board().newest(), 2U);
}

TEST(Firmware, pins_that_are_told_wrongly_reach_no_chip) {
    Rig rig(kRouteUsb);
    usbSetupDevice(rig.part);
    rig.part.SetClockPosition(8); // the board is rewired, the bridge isn't told
    usbSendSPI(rig.part, 0x123450);
    EXPECT_EQ(rig.board().newest(), 0U);
    usbSetupDevice(rig.part);
    usbSendSPI(rig.part, 0x123450);
    EXPECT_EQ(rig.board().newest(), 1U);
}

TEST(Firmware, held_back_replies_come_together) {
    Rig rig(kRouteUsb);
    usbSetupDevice(rig.part);
    rig.bench.bridge.faults.join = true;
    rig.Listen();
    usbSetBurstMode(rig.part, 1);
    EXPECT_FALSE(rig.transport.hooked()) << "nothing came";
    usbSetBurstMode(rig.part, 0);
    EXPECT_EQ(rig.transport.received().size(), 3) << "the second reply waits";
}

} // namespace
} // namespace zentrel
