#include "transport/readback.h"

#include <gmock/gmock.h>

#include "rig.h"

namespace zentrel {
namespace {

struct DisplayCounter : Displays {
    void UpdateBitDisplay() override { ++refreshes; }
    int refreshes = 0;
};

class ReadBack : public ::testing::TestWithParam<std::string_view> {
  protected:
    Rig rig{GetParam()};
    cPart& part = rig.part;
    void SetUp() override { LoadAll(part); }
};

INSTANTIATE_TEST_SUITE_P(Routes, ReadBack, ::testing::Values(kRouteLpt, kRouteUsb),
                         [](const auto& info) { return std::string(info.param); });

TEST_P(ReadBack, gives_what_the_chip_holds_and_not_what_the_model_says) {
    DisplayCounter displays;
    Upward upward = part.upward();
    upward.displays = &displays;
    part.Connect(upward);
    part.Registers("R1").SetValue(0x000001);
    EXPECT_EQ(QVX4100ReadRegister(part, "R1"), 0xABCDE);
    EXPECT_EQ(QVX4100ReadRegister(part, "R0"), 0x12345);
    EXPECT_EQ(displays.refreshes, 2);
    EXPECT_EQ(part.PrgmBits("RB_ADDR").BitValue(), 0) << "the address field stays as it was set";
    EXPECT_FALSE(part.readback_mode);
    LoadRegister(part, "R1");
    EXPECT_EQ(QVX4100ReadRegister(part, "R1"), 0);
}

TEST_P(ReadBack, the_exchange_ends_with_the_lines_low_and_the_pins_held) {
    part.PrgmPins("CE").SetEnabled(true);
    UpdateOutputPins(part);
    QVX4100ReadRegister(part, "R1");
    EXPECT_EQ(rig.board().levels(), PinBit(5));
}

TEST_P(ReadBack, fields_come_without_the_control_bits) {
    const auto field = [&](const char* id, const char* reg, int position, int length) {
        part.PrgmBits.Add(std::make_shared<cPrgmBits>(part, id, reg,
                                                      static_cast<std::int16_t>(position),
                                                      static_cast<std::int16_t>(length), true),
                          id);
    };
    field("HIGH", "R1", 12, 8);
    field("CONTROL", "R1", 1, 3);
    field("LOST", "r1", 12, 8);
    EXPECT_EQ(ReadRegister(part, "high"), 0xBC);
    EXPECT_EQ(ReadRegister(part, "CONTROL"), 0);
    const auto words = rig.board().newest();
    EXPECT_EQ(ReadRegister(part, "NONE"), -1);
    EXPECT_EQ(ReadRegister(part, "LOST"), -3) << "register names compare exactly";
    EXPECT_EQ(QVX4100ReadRegister(part, "r1"), -1);
    part.ReadbackAddressRegister.clear();
    EXPECT_EQ(ReadRegister(part, "HIGH"), -2);
    EXPECT_EQ(QVX4100ReadRegister(part, "R1"), 0);
    EXPECT_EQ(rig.board().newest(), words) << "nothing touched the port";
}

TEST(ReadBackLpt, clocks_once_for_each_data_bit_and_finds_any_status_line) {
    for (const int pin : {1500, 1300, 1200, 1000, 1100}) {
        Rig rig;
        rig.part.InputPinPositionINI = pin + 7;
        rig.part.SetInputPinPosition(std::int32_t{rig.part.InputPinPositionINI});
        LoadAll(rig.part);
        rig.Listen();
        EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0xABCDE) << pin;
        // 51 states of the address word, 20 clocks, and the end of the latch.
        EXPECT_EQ(rig.wire.writes.size(), 2U * 51 + 2 * 20 + 1);
    }
}

TEST(ReadBackLpt, a_board_that_is_gone_reads_all_ones) {
    Rig rig;
    rig.bench.port.SetCable(false);
    EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0xFFFFF);
}

TEST(ReadBackUsb, a_missing_or_short_reply_reads_0) {
    Rig rig(kRouteUsb);
    LoadAll(rig.part);
    SimulatedBridge& bridge = rig.bench.bridge;
    bridge.faults.raw = std::vector<std::uint8_t>{5, 240, 17, 0xFF, 0xFF};
    EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0);
    bridge.faults.raw.reset();
    bridge.faults.refused = {usb::kReadBack};
    EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0);
    bridge.SetPlugged(false);
    EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0);
}

TEST(ReadBackUsb, data_come_low_byte_first) {
    const std::uint8_t packet[] = {6, 240, 17, 0x34, 0x12, 0xFF};
    const UsbReply reply{packet};
    EXPECT_EQ(ProcessReadBackValue(reply, 16), 0x1234);
    EXPECT_EQ(ProcessReadBackValue(reply, 20), 0xF1234);
    EXPECT_EQ(ProcessReadBackValue(reply, 25), 0);
    EXPECT_EQ(ProcessReadBackValue(reply, 0), 0);
}

} // namespace
} // namespace zentrel
