#include "transport/bench/fault_injector.h"

#include <random>

#include <gmock/gmock.h>

#include "rig.h"
#include "transport/readback.h"

namespace zentrel {
namespace {

struct FaultyRig : Rig {
    FaultyRig(std::string_view route, std::uint64_t seed, double rate)
        : Rig(route), faults(seed, rate) {
        transport.Use({port, bridge, bench.watch});
        usbSetupDevice(part);
    }
    ~FaultyRig() { transport.Use(bench.drivers()); }

    FaultInjector faults;
    FaultyPort port{bench.port, faults};
    FaultyBridge bridge{bench.bridge, faults};
};

TEST(Faults, every_word_that_is_acknowledged_was_latched) {
    FaultyRig rig(kRouteUsb, 2026, 0.12);
    std::mt19937_64 random(7);
    int acknowledged = 0;
    int sent = 0;
    for (; rig.faults.strikes() < 10000 && sent < 1000000; ++sent) {
        if (usbGetError(rig.part) != 0 || sent % 50 == 0) usbSetupDevice(rig.part);
        const BitWord word(random() & 0xFFFFFF);
        const UsbReply reply =
            usbCommand(rig.part, usbMakeCmd_Word(rig.part, usb::kSendWord, word));
        if (reply[1] != usb::kSendWord) continue;
        ++acknowledged;
        ASSERT_GT(rig.board().newest(), 0U);
        ASSERT_EQ(rig.board().history().back().word, word) << "command " << sent;
    }
    EXPECT_GE(rig.faults.strikes(), 10000);
    EXPECT_GT(acknowledged, sent / 4) << "the link recovers each time";
}

TEST(Faults, every_operation_survives_them_and_the_board_loads_again_afterwards) {
    for (const std::string_view route : {kRouteUsb, kRouteLpt}) {
        FaultyRig rig(route, 99, 0.05);
        for (int i = 0; i < 3000; ++i) {
            LoadAll(rig.part);
            UpdateOutputPins(rig.part);
            usbSendSPI_Burst(rig.part, i, 0x10, 1);
            QVX4100ReadRegister(rig.part, "R1");
            if (i % 10 == 0) rig.bench.PullBridge();
            if (i % 10 == 3) rig.bench.PlugBridge();
            if (i % 7 == 0) LoadDevice(rig.part);
            ReopenPortDriver(rig.part);
        }
        rig.faults.Stop();
        rig.bench.bridge.SetPlugged(true);
        ReopenPortDriver(rig.part);
        LoadDevice(rig.part);
        EXPECT_EQ(rig.board().Content("R1"), rig.part.Registers("R1").word()) << route;
        EXPECT_EQ(QVX4100ReadRegister(rig.part, "R0"), 0x12345) << route;
    }
}

TEST(Faults, the_same_seed_gives_the_same_faults) {
    const auto run = [](std::uint64_t seed) {
        FaultyRig rig(kRouteUsb, seed, 0.2);
        for (int i = 0; i < 200; ++i)
            LoadAll(rig.part);
        return std::pair(rig.faults.strikes(), rig.Latched());
    };
    EXPECT_EQ(run(5), run(5));
    EXPECT_NE(run(5), run(6));
}

TEST(WireLog, hears_the_bytes_of_both_routes_and_can_stop) {
    Rig rig;
    PortDriver* bare = &rig.transport.port();
    EXPECT_EQ(bare, &rig.bench.port) << "nobody listens: nothing stands in between";
    rig.Listen();
    LoadRegister(rig.part, "R0");
    InitUSBInterface(rig.part);
    usbCmd_GetVersion(rig.part);
    EXPECT_EQ(rig.wire.writes.size(), 102U);
    EXPECT_THAT(rig.wire.packets, ::testing::ElementsAre(std::vector<int>{2, 10}));
    EXPECT_EQ(rig.wire.receives, 1);
    EXPECT_EQ(rig.wire.opens, 1);
    rig.transport.wire().Remove(rig.wire);
    LoadRegister(rig.part, "R0");
    EXPECT_EQ(rig.wire.writes.size(), 102U);
}

} // namespace
} // namespace zentrel
