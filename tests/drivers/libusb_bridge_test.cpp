#include "transport/drivers/libusb_bridge.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include <gmock/gmock.h>

#include "tests/drivers/real_rig.h"
#include "transport/readback.h"

namespace zentrel {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Clock = std::chrono::steady_clock;

/// What libusb allocates meanwhile counts as no leak: of a transfer that never comes back it keeps
/// its own record for good.
struct LibraryKeeps {
#ifdef __SANITIZE_ADDRESS__
    LibraryKeeps() {
        __lsan_disable();
    }
    ~LibraryKeeps() {
        __lsan_enable();
    }
#endif
};

constexpr auto kOut = PlayedUsbfs::kOut;
constexpr auto kIn = PlayedUsbfs::kIn;

TEST(Bridge, words_pins_and_read_back_are_those_of_the_simulated_bench) {
    RealRig rig(kRouteUsb);
    LoadAll(rig.part);
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450", "R1=ABCDE1", "R2=000002"));
    rig.part.SetOutPins(rig.part.PrgmPins("CE").Value());
    UpdateOutputPins(rig.part);
    EXPECT_TRUE(rig.board().PinHigh(5));
    EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0xABCDE);
    EXPECT_EQ(rig.messages.shown, std::vector<std::string>());
}

TEST(Bridge, answers_by_interrupt_endpoints_too_and_says_when_it_has_none) {
    RealRig rig(kRouteUsb);
    const auto replug = [&](int kind) {
        rig.kernel.PullBridge();
        rig.kernel.SetEndpointKind(kind);
        rig.kernel.PlugBridge();
        rig.Dispatch();
    };
    replug(3);
    LoadRegister(rig.part, "R0");
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450"));
    replug(0);
    EXPECT_EQ(usbGetError(rig.part), LibusbBridge::kNoEndpoints);
    EXPECT_THAT(rig.messages.shown, ElementsAre(HasSubstr("no endpoints")));
}

TEST(Bridge, takes_replies_of_any_length_without_waiting_for_more) {
    const auto bulk = 2, interrupt = 3; // packets of 64 and of 8 bytes
    RealRig rig(kRouteUsb, {500ms, 3ms});
    for (const int kind : {bulk, interrupt}) {
        rig.kernel.PullBridge();
        rig.kernel.SetEndpointKind(kind);
        rig.kernel.PlugBridge();
        InitUSBInterface(rig.part);
        for (const int length : {4, 8, 63, 64, 65, 101}) {
            std::vector<std::uint8_t> reply(static_cast<std::size_t>(length), 'v');
            reply[0] = static_cast<std::uint8_t>(length);
            reply[1] = usb::kAcknowledged;
            reply[2] = usb::kVersion;
            rig.bench.bridge.faults.raw = reply;
            const auto begun = Clock::now();
            EXPECT_EQ(usbCmd_GetVersion(rig.part).size(), length);
            EXPECT_LT(Clock::now() - begun, 400ms) << length;
        }
    }
}

TEST(Bridge, any_broken_transfer_is_an_error_at_once_and_load_device_mends_it) {
    struct Case {
        std::uint8_t direction;
        UsbFault fault;
        int error;
    };
    const Case cases[] = {
        {kOut, UsbFault::Refused, LibusbBridge::kBroken},
        {kOut, UsbFault::Protocol, LibusbBridge::kBroken},
        {kOut, UsbFault::Halted, LibusbBridge::kBroken},
        {kOut, UsbFault::Half, LibusbBridge::kBroken},
        {kOut, UsbFault::Unnoticed, LibusbBridge::kBroken},
        {kOut, UsbFault::Lost, LibusbBridge::kTimeOut},
        {kIn, UsbFault::Refused, LibusbBridge::kBroken},
        {kIn, UsbFault::Protocol, LibusbBridge::kBroken},
        {kIn, UsbFault::Halted, LibusbBridge::kBroken},
        {kIn, UsbFault::Lost, LibusbBridge::kTimeOut},
        {kIn, UsbFault::Late, LibusbBridge::kTimeOut},
    };
    RealRig rig(kRouteUsb);
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << "direction " << int{c.direction} << " fault " << static_cast<int>(c.fault));
        rig.usb.StrikeAfter(c.direction, 0, c.fault);
        const auto begun = Clock::now();
        EXPECT_TRUE(usbCommand(rig.part, UsbPacket(usb::kVersion)).empty());
        EXPECT_LT(Clock::now() - begun, 1500ms) << "it doesn't hang";
        EXPECT_EQ(usbGetError(rig.part), c.error);
        EXPECT_NE(rig.bridge.Diagnosis(), "");
        LoadChanges(rig.part);
        EXPECT_EQ(usbSendSPI(rig.part, 1.0), 0) << "a bridge in error is left alone";
        const auto before = rig.board().newest();
        LoadDevice(rig.part);
        EXPECT_EQ(usbGetError(rig.part), 0);
        EXPECT_EQ(rig.bridge.Diagnosis(), "");
        EXPECT_EQ(rig.board().newest(), before + 3);
    }
}

TEST(Bridge, a_transfer_that_the_system_never_gives_back_does_not_hang_it) {
    RealRig rig(kRouteUsb);
    for (const std::uint8_t direction : {kOut, kIn}) {
        rig.usb.StrikeAfter(direction, 0, UsbFault::Stuck);
        [[maybe_unused]] const LibraryKeeps theTransfer;
        const auto begun = Clock::now();
        EXPECT_TRUE(usbCommand(rig.part, UsbPacket(usb::kVersion)).empty());
        EXPECT_LT(Clock::now() - begun, 1500ms);
        EXPECT_EQ(usbGetError(rig.part), LibusbBridge::kBroken);
        const auto before = rig.board().newest();
        LoadDevice(rig.part);
        EXPECT_EQ(rig.board().newest(), before + 3);
    }
}

TEST(Bridge, a_late_reply_never_acknowledges_a_later_command) {
    RealRig rig(kRouteUsb);
    rig.usb.StrikeAfter(kIn, 0, UsbFault::Late);
    EXPECT_TRUE(usbCommand(rig.part, UsbPacket(usb::kVersion)).empty());
    InitUSBInterface(rig.part);
    EXPECT_EQ(rig.usb.resets(), 1);
    std::this_thread::sleep_for(2 * RealRig::kLimits.transfer);
    rig.bench.bridge.faults.refused = {usb::kVersion};
    EXPECT_TRUE(usbCommand(rig.part, UsbPacket(usb::kVersion)).empty())
        << "this one is refused; only the stale reply acknowledges it";
}

TEST(Bridge, a_late_read_back_never_answers_the_next_one) {
    RealRig rig(kRouteUsb);
    LoadAll(rig.part);
    for (const auto wait : {0ms, 3 * RealRig::kLimits.transfer}) {
        rig.usb.StrikeAfter(kIn, 0, UsbFault::Late);
        EXPECT_EQ(QVX4100ReadRegister(rig.part, "R0"), 0);
        EXPECT_EQ(QVX4100ReadRegister(rig.part, "R0"), 0) << "a bridge in error is left alone";
        std::this_thread::sleep_for(wait);
        InitUSBInterface(rig.part);
        usbSetupDevice(rig.part); // the reset took what it knew
        EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0xABCDE);
    }
}

// What was lost stays lost, and is marked as not sent, until the device is loaded.
TEST(Bridge, a_late_answer_in_the_middle_of_a_load_ends_it_there) {
    const int settingUp = 4; // receives before the first word's: one finds nothing
    for (const int word : {0, 1, 2}) {
        SCOPED_TRACE(word);
        RealRig rig(kRouteUsb);
        rig.usb.StrikeAfter(kIn, settingUp + word, UsbFault::Late);
        LoadAll(rig.part);
        EXPECT_EQ(usbGetError(rig.part), LibusbBridge::kTimeOut);
        EXPECT_EQ(rig.board().newest(), static_cast<std::uint64_t>(word) + 1);
        EXPECT_FALSE(rig.part.Registers(word + 1).sent()) << "nobody knows whether it arrived";
        LoadAll(rig.part);
        EXPECT_EQ(usbGetError(rig.part), 0);
        EXPECT_EQ(rig.board().newest(), static_cast<std::uint64_t>(word) + 4);
        EXPECT_EQ(rig.messages.shown, std::vector<std::string>());
    }
}

TEST(Bridge, what_is_left_in_the_pipe_is_read_away_on_opening) {
    RealRig rig(kRouteUsb);
    const std::uint8_t packet[] = {3, usb::kSpiDelay, 50};
    std::uint8_t reply[100];
    rig.bridge.usbSendCmdData(packet, 3); // nobody takes the acknowledgement
    rig.bridge.InitUSBInterface();
    rig.usb.StrikeAfter(kIn, 0, UsbFault::Split);
    rig.bridge.usbSendCmdData(packet, 3);
    EXPECT_EQ(rig.bridge.usbReceiveCmdData(reply, 100), 1) << "and nobody takes the rest";
    rig.bridge.InitUSBInterface();
    EXPECT_EQ(usbCmd_GetVersion(rig.part)[1], usb::kVersion);
    EXPECT_EQ(rig.messages.shown, std::vector<std::string>());
}

TEST(Bridge, a_bridge_that_never_falls_silent_is_given_up) {
    RealRig rig(kRouteUsb);
    rig.usb.SetBabbling(true);
    InitUSBInterface(rig.part);
    EXPECT_EQ(usbGetError(rig.part), LibusbBridge::kBroken);
    rig.usb.SetBabbling(false);
    LoadDevice(rig.part);
    EXPECT_EQ(rig.board().newest(), 3U);
}

TEST(Bridge, garbage_acknowledges_nothing) {
    RealRig rig(kRouteUsb);
    for (const std::vector<std::uint8_t>& garbage : {std::vector<std::uint8_t>{2, 77},
                                                     {0},
                                                     {200, 240, 16},
                                                     {9, 240, 16},
                                                     {1},
                                                     {4, 16, 240, 0}}) {
        rig.bench.bridge.faults.raw = garbage;
        EXPECT_TRUE(usbCommand(rig.part, UsbPacket(usb::kVersion)).empty());
        rig.bench.bridge.faults = {};
        const auto before = rig.board().newest();
        LoadDevice(rig.part);
        EXPECT_EQ(rig.board().newest(), before + 3);
    }
}

// The engineer pulls the plug in the middle of something, and later plugs it in elsewhere.
TEST(Bridge, pulled_in_the_middle_of_anything_it_works_on_when_it_is_back) {
    struct Case {
        const char* name;
        std::uint8_t direction;
        int after;
        UsbFault fault;
        void (*work)(RealRig&);
    };
    const auto word = [](RealRig& rig) { LoadRegister(rig.part, "R0"); };
    const auto loadAll = [](RealRig& rig) { LoadAll(rig.part); };
    const auto readBack = [](RealRig& rig) { QVX4100ReadRegister(rig.part, "R1"); };
    const auto burst = [](RealRig& rig) {
        for (int i = 0; i < 20; ++i)
            usbSendSPI_Burst(rig.part, i, 0x10, 1);
    };
    const Case cases[] = {
        {"before a packet", kOut, 0, UsbFault::Pulled, word},
        {"within a packet", kOut, 0, UsbFault::PulledHalf, word},
        {"after a packet", kOut, 0, UsbFault::PulledOut, word},
        {"before a reply", kIn, 0, UsbFault::Pulled, word},
        {"within a reply", kIn, 0, UsbFault::PulledIn, word},
        {"during LoadAll", kOut, 5, UsbFault::PulledOut, loadAll},
        {"within a word of LoadAll", kOut, 4, UsbFault::PulledHalf, loadAll},
        {"during read-back", kIn, 0, UsbFault::Pulled, readBack},
        {"within what is read back", kIn, 0, UsbFault::PulledIn, readBack},
        {"during a burst loop", kOut, 40, UsbFault::Pulled, burst},
    };
    RealRig rig(kRouteUsb);
    int socket = 1;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        rig.usb.StrikeAfter(c.direction, c.after, c.fault);
        const auto begun = Clock::now();
        c.work(rig);
        EXPECT_LT(Clock::now() - begun, 1s);
        EXPECT_EQ(usbGetError(rig.part), LibusbBridge::kNotAttached);
        c.work(rig);
        EXPECT_EQ(rig.bridge.Diagnosis(), "");

        rig.kernel.NoticePull();
        rig.Dispatch();
        EXPECT_EQ(usbConnected(rig.part), 0);
        rig.kernel.PlugBridge("1-" + std::to_string(++socket));
        rig.Dispatch();
        const auto before = rig.board().newest();
        LoadDevice(rig.part);
        EXPECT_EQ(rig.board().newest(), before + 3);
        EXPECT_EQ(rig.messages.shown, std::vector<std::string>());
    }
}

TEST(Bridge, one_message_tells_the_rule_to_who_may_not_open_it) {
    RealRig rig(kRouteUsb);
    rig.kernel.DenyBridge();
    {
        const WithoutRights nobody;
        for (int i = 0; i < 3; ++i)
            LoadAll(rig.part);
    }
    EXPECT_EQ(usbGetError(rig.part), LibusbBridge::kNoRight);
    EXPECT_NE(usbConnected(rig.part), 0);
    EXPECT_THAT(rig.messages.shown, ElementsAre(HasSubstr(kBridgeRule)));

    std::ifstream shipped(ZENTREL_SOURCE_DIR "/packaging/udev/70-zentrel-bridge.rules");
    const std::string rules{std::istreambuf_iterator<char>(shipped), {}};
    EXPECT_THAT(rules, HasSubstr(std::string(kBridgeRule) + "\n"));
}

TEST(Bridge, one_that_another_program_has_is_told_once_each_time_it_was_lost) {
    RealRig rig(kRouteUsb);
    for (int times = 1; times <= 2; ++times) {
        rig.usb.SetInUse(true);
        LoadAll(rig.part);
        LoadAll(rig.part);
        EXPECT_EQ(usbGetError(rig.part), LibusbBridge::kInUse);
        EXPECT_EQ(rig.messages.shown.size(), static_cast<std::size_t>(times));
        EXPECT_THAT(rig.messages.shown.back(), HasSubstr("Another program has the USB bridge"));
        rig.usb.SetInUse(false);
        LoadAll(rig.part);
        EXPECT_EQ(usbGetError(rig.part), 0);
    }
}

} // namespace
} // namespace zentrel
