#include <random>

#include <gmock/gmock.h>

#include "tests/drivers/direct_ioctl.h"
#include "tests/drivers/real_rig.h"
#include "transport/bench/fault_injector.h"
#include "transport/readback.h"

namespace zentrel {
namespace {

using namespace std::chrono_literals;

constexpr int kFaults = 10000;
constexpr int kFullPlugs = 50; // every so many pulls, with the device tree and the events

// The engineer brings the bridge back, however it went.
void Recover(RealRig& rig, int& pulls) {
    for (int tries = 0; tries < 1000; ++tries) {
        if (!rig.usb.plugged() && ++pulls % kFullPlugs == 0) {
            rig.kernel.NoticePull();
            rig.kernel.PlugBridge(pulls % (2 * kFullPlugs) == 0 ? "1-1" : "1-2");
            rig.watch.Dispatch();
        } else if (!rig.usb.plugged()) {
            rig.usb.Plug();
        }
        usbSetupDevice(rig.part);
        if (usbGetError(rig.part) == 0) return;
    }
    FAIL() << "the link doesn't come back: error " << usbGetError(rig.part);
}

TEST(RandomFaults, every_word_believed_acknowledged_was_latched) {
    RealRig rig(kRouteUsb, {1ms, 1ms});
    const DirectIoctl direct(rig.kernel.root() + "/dev/bus/usb/", rig.usb);
    FaultInjector faults(2026, 0.2);
    rig.usb.SetInjector(&faults);
    std::mt19937_64 random(7);
    int acknowledged = 0;
    int sent = 0;
    int pulls = 0;
    for (; faults.strikes() < kFaults && !HasFatalFailure(); ++sent) {
        const BitWord word(random() & 0xFFFFFF);
        const UsbReply reply =
            usbCommand(rig.part, usbMakeCmd_Word(rig.part, usb::kSendWord, word));
        if (reply[1] == usb::kSendWord) {
            ++acknowledged;
            ASSERT_GT(rig.board().newest(), 0U);
            ASSERT_EQ(rig.board().history().back().word, word) << "command " << sent;
        } else {
            Recover(rig, pulls);
        }
    }
    EXPECT_GT(acknowledged, kFaults / 10);
}

TEST(RandomFaults, every_operation_survives_them_and_the_board_loads_again_afterwards) {
    RealRig rig(kRouteUsb, {1ms, 1ms});
    const DirectIoctl direct(rig.kernel.root() + "/dev/bus/usb/", rig.usb);
    FaultInjector faults(99, 0.05);
    rig.usb.SetInjector(&faults);
    int pulls = 0;
    for (int i = 0; i < 300; ++i) {
        LoadAll(rig.part);
        UpdateOutputPins(rig.part);
        usbSendSPI_Burst(rig.part, i, 0x10, 1);
        QVX4100ReadRegister(rig.part, "R1");
        if (i % 7 == 0) LoadDevice(rig.part);
        if (usbGetError(rig.part) != 0) Recover(rig, pulls);
    }
    EXPECT_GT(faults.strikes(), 100);
    faults.Stop();
    Recover(rig, pulls);
    LoadDevice(rig.part);
    EXPECT_EQ(rig.board().Content("R1"), rig.part.Registers("R1").word());
    EXPECT_EQ(QVX4100ReadRegister(rig.part, "R0"), 0x12345);
}

// The parallel port acknowledges nothing, so what counts is that no half word is ever latched.
TEST(RandomFaults, a_failing_port_latches_whole_words_or_nothing) {
    RealRig rig;
    const DirectIoctl direct(rig.kernel.root() + "/dev/parport0", rig.lpt);
    FaultInjector faults(2026, 0.02);
    rig.lpt.SetInjector(&faults);
    std::mt19937_64 random(7);
    int whole = 0;
    for (int sent = 0; faults.strikes() < kFaults; ++sent) {
        const BitWord word(random() & 0xFFFFF0); // R0's address
        rig.part.Registers("R0").SetValue(word.ToDouble());
        const auto before = rig.board().newest();
        const int struck = faults.strikes();
        LoadRegister(rig.part, "R0");
        const auto latched = rig.board().newest() - before;
        ASSERT_EQ(rig.board().newest() == before ? word : rig.board().history().back().word, word)
            << "word " << sent;
        ASSERT_LE(latched, 1U);
        if (faults.strikes() == struck) {
            ASSERT_EQ(latched, 1U) << "word " << sent;
        }
        whole += static_cast<int>(latched);
        if (rig.port.Diagnosis().empty()) continue;
        for (int tries = 0; !ReopenPortDriver(rig.part); ++tries) {
            ASSERT_LT(tries, 100) << rig.port.Diagnosis();
            rig.lpt.SetGone(false);
        }
    }
    EXPECT_GT(whole, kFaults / 20);
    EXPECT_EQ(rig.messages.shown, std::vector<std::string>());
}

} // namespace
} // namespace zentrel
