#include "transport/usb_bridge.h"

#include <gmock/gmock.h>

#include "allocation_count.h"
#include "rig.h"
#include "transport/checks.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using Packet = std::vector<int>;
using Bytes = std::vector<std::uint8_t>;

class Usb : public ::testing::Test {
  protected:
    Rig rig{kRouteUsb};
    cPart& part = rig.part;
    SimulatedBridge& bridge = rig.bench.bridge;
    std::vector<Packet>& packets = rig.wire.packets;
    std::vector<std::string>& shown = rig.messages.shown;

    void SetUp() override {
        usbSetupDevice(part);
        rig.Listen();
    }
};

TEST_F(Usb, setup_tells_pins_trigger_and_format) {
    rig.AddPin("trigger", 10);
    usbSetupDevice(part);
    EXPECT_THAT(packets, ElementsAre(Packet{10, 12, 0, 1, 2, 4, 0, 64, 64, 0}, Packet{4, 20, 1, 1},
                                     Packet{3, 21, 1}, Packet{4, 14, 4, 20}));
}

TEST_F(Usb, a_read_back_pin_beyond_pin_9_is_told_and_sent_as_128) {
    part.SetInputPinPosition(10);
    part.PrgmPins("READ").SetPosition(10);
    usbSetupPins(part);
    EXPECT_THAT(packets, ElementsAre(Packet{10, 12, 0, 1, 2, 4, 0, 128, 0, 1}, Packet{3, 21, 0}));
    EXPECT_THAT(shown, ElementsAre("Error readback pin must be on first port.  Pins 1 through 8"));
}

TEST_F(Usb, a_trigger_mask_becomes_port_and_bit) {
    for (const int mask : {128, 256, 4096})
        usbSetTriggerPin(part, mask);
    EXPECT_THAT(packets,
                ElementsAre(Packet{4, 20, 0, 128}, Packet{4, 20, 1, 1}, Packet{4, 20, 1, 16}));
}

TEST_F(Usb, words_go_most_significant_byte_first_at_the_length_of_the_register) {
    EXPECT_EQ(usbSendSPI(part, 0x123456), 5);
    part.SetRegisterLength(12);
    usbSetupFormat(part);
    usbSendSPI(part, 0xABC);
    EXPECT_THAT(packets, ElementsAre(Packet{5, 16, 0x12, 0x34, 0x56}, Packet{4, 14, 4, 8},
                                     Packet{4, 16, 0x0A, 0xBC}));
    EXPECT_EQ(rig.board().history().back().word, BitWord(0xABC));
}

TEST_F(Usb, a_word_that_fits_no_packet_is_not_sent_and_the_status_line_says_so) {
    part.SetRegisterLength(800);
    EXPECT_EQ(usbSendSPI(part, 1), 0);
    usbSendSPI_Burst(part, 1, 0, 0);
    EXPECT_TRUE(packets.empty());
    EXPECT_EQ(rig.status.line, "A word of 800 bits is too long for USB. Nothing was sent.");
}

TEST_F(Usb, a_burst_word_is_one_buffer_run) {
    rig.AddPin("Trigger", 6);
    usbSetupDevice(part);
    packets.clear();
    usbSendSPI_Burst(part, 0x123450, 0x110, 1);
    EXPECT_THAT(packets,
                ElementsAre(Packet{3, 9, 0}, Packet{7, 3, 0, 4, 6, 0, 0x10},
                            Packet{7, 3, 0, 4, 6, 1, 1}, Packet{6, 3, 0, 3, 21, 0},
                            Packet{6, 3, 0, 3, 21, 1}, Packet{8, 3, 0, 5, 16, 0x12, 0x34, 0x50},
                            Packet{6, 3, 0, 3, 21, 0}, Packet{3, 8, 0}));
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450"));
    EXPECT_TRUE(rig.board().history().back().trigger);
    EXPECT_EQ(rig.board().history().back().pins, PinBit(5) | PinBit(6) | PinBit(10));

    packets.clear();
    usbSendSPI_Burst(part, 0xABCDE1, 0, 0);
    EXPECT_EQ(packets.size(), 6U);
    EXPECT_FALSE(rig.board().history().back().trigger);
    EXPECT_EQ(rig.board().history().back().pins, 0U);
}

TEST_F(Usb, mode_and_timing_reach_the_firmware) {
    usbSetBurstMode(part, 1);
    usb_SetSPIDelay(part, 200);
    EXPECT_TRUE(bridge.state().burstMode);
    EXPECT_EQ(bridge.state().delay, 200);
}

// A bridge that acknowledges whatever it gets, without a byte of memory of its own.
struct Yes : BridgeLibrary {
    std::int16_t InitUSBInterface() override { return 0; }
    std::int16_t usbGetError() override { return 0; }
    std::int16_t usbConnected() override { return 1; }
    std::int16_t usbSendCmdData(const std::uint8_t* packet, std::int16_t length) override {
        opcode = packet[1];
        return length;
    }
    std::int16_t usbReceiveCmdData(std::uint8_t* buffer, std::int16_t) override {
        buffer[0] = 3;
        buffer[1] = usb::kAcknowledged;
        buffer[2] = opcode;
        return 3;
    }
    std::uint8_t opcode = 0;
};

TEST_F(Usb, a_burst_word_allocates_nothing) {
    Yes yes;
    rig.transport.wire().Remove(rig.wire);
    rig.transport.Use({rig.bench.port, yes, rig.bench.watch});
    const long before = AllocationCount();
    for (int i = 0; i < 100; ++i)
        usbSendSPI_Burst(part, i, 0x10, 1);
    EXPECT_EQ(AllocationCount(), before);
    EXPECT_TRUE(shown.empty());
}

// Replies.

TEST_F(Usb, a_second_packet_waits_and_answers_without_a_receive) {
    bridge.faults.raw = Bytes{3, 240, 16, 4, 240, 19, 7};
    EXPECT_FALSE(usbCommand(part, UsbPacket(usb::kSendWord, {1, 2, 3})).empty());
    const int receives = rig.wire.receives;
    const UsbReply reply = usbGetAck(part, usb::kSpiDelay, "delay");
    EXPECT_EQ(rig.wire.receives, receives);
    ASSERT_EQ(reply.size(), 4);
    EXPECT_EQ(reply[0], 3);
    EXPECT_EQ(reply[1], 19);
    EXPECT_EQ(reply[2], 7);
    EXPECT_EQ(reply[3], 0);
    EXPECT_TRUE(shown.empty());
}

TEST_F(Usb, a_reply_in_two_pieces_is_put_together_and_in_more_counts_as_none) {
    bridge.faults.split = 2;
    EXPECT_EQ(usbSendSPI(part, 0x123450), 5);
    EXPECT_TRUE(rig.transport.hooked());
    bridge.faults.split = 1;
    usbSendSPI(part, 0xABCDE1);
    EXPECT_FALSE(rig.transport.hooked()) << "an unusable reply takes the watch away";
    EXPECT_TRUE(shown.empty());
}

TEST_F(Usb, a_refusal_is_shown_for_the_stream_and_for_the_command) {
    bridge.faults.refused = {usb::kSendWord};
    usbSendSPI(part, 1);
    const std::string rest = "\nCommand NACKed = 0x10\nError Code = 0x63";
    EXPECT_THAT(shown, ElementsAre("USB Comms Info: NACK RXed in GetAck" + rest,
                                   "USB Comms Info: NACK RXed in cmd_SendSPI" + rest));
    EXPECT_TRUE(rig.transport.hooked());
    EXPECT_EQ(rig.board().newest(), 0U);
}

TEST_F(Usb, the_acknowledgement_of_another_command_is_told_and_taken) {
    bridge.faults.wrongOpcode = 12;
    EXPECT_FALSE(usbCommand(part, UsbPacket(usb::kVersion)).empty());
    EXPECT_THAT(shown, ElementsAre("ACKing command A but got command C in the ack."));
}

TEST_F(Usb, replies_that_no_packet_explains_take_the_watch_away_in_silence) {
    const Bytes replies[] = {
        {3, 7, 16},     // unknown kind
        {1},            // no room for a kind
        {200, 240, 16}, // longer than any packet, and never complete
        {5, 240, 16},   // the rest never comes
        {},             // silence
    };
    for (const Bytes& raw : replies) {
        bridge.faults.raw = raw;
        InitUSBInterface(part);
        Hook(part);
        EXPECT_TRUE(usbCommand(part, UsbPacket(usb::kVersion)).empty());
        EXPECT_FALSE(rig.transport.hooked()) << ::testing::PrintToString(raw);
    }
    EXPECT_TRUE(shown.empty());
}

TEST_F(Usb, a_length_of_0_is_told_and_does_not_block_the_stream) {
    bridge.faults.raw = Bytes{0, 0, 0};
    usbSetBurstMode(part, 1);
    EXPECT_THAT(shown, ElementsAre("usbReceiveCmdData len = 0 in usbGetAck.. "
                                   "usbSetBurstMode : CMD_SETBURSTMODE"));
    bridge.faults.raw.reset();
    EXPECT_EQ(usbCommand(part, UsbPacket(usb::kVersion))[1], usb::kVersion);
}

TEST_F(Usb, a_bridge_in_error_is_left_alone_until_it_is_opened_anew) {
    bridge.faults.deaf = true;
    usbSendSPI(part, 1);
    bridge.faults.deaf = false;
    packets.clear();
    EXPECT_EQ(usbSendSPI(part, 0x123450), 0);
    EXPECT_TRUE(packets.empty());
    usbSetupDevice(part);
    EXPECT_EQ(usbSendSPI(part, 0x123450), 5);
    EXPECT_THAT(rig.Latched(), ElementsAre("R0=123450"));
}

TEST_F(Usb, a_short_send_takes_the_watch_away) {
    bridge.faults.shortSend = 4;
    EXPECT_EQ(usbSendSPI(part, 1), 4);
    EXPECT_FALSE(rig.transport.hooked());
    EXPECT_EQ(rig.board().newest(), 0U);
}

TEST_F(Usb, half_a_packet_of_the_old_link_does_not_spoil_the_new_one) {
    bridge.faults.raw = Bytes{3, 240, 10, 9, 240};
    usbCmd_GetVersion(part);
    bridge.faults.raw.reset();
    usbSetupDevice(part);
    EXPECT_EQ(usbCmd_GetVersion(part)[1], usb::kVersion);
    EXPECT_TRUE(shown.empty());
}

TEST_F(Usb, a_bridge_pulled_in_the_middle_of_load_all_ends_it_quietly) {
    bridge.faults.unplugAfter = 4;
    LoadAll(part);
    EXPECT_EQ(rig.board().newest(), 1U);
    EXPECT_TRUE(shown.empty());
    rig.bench.PlugBridge();
    LoadChanges(part);
    LoadAll(part);
    EXPECT_EQ(rig.board().newest(), 4U);
}

// The menu's boxes.

TEST_F(Usb, version_and_timing_boxes) {
    USBVersion(part);
    rig.messages.answer = "-3";
    AdjustTiming(part);
    EXPECT_EQ(bridge.state().delay, 0);
    rig.messages.answer = "300";
    AdjustTiming(part);
    EXPECT_EQ(bridge.state().delay, 255);
    rig.messages.answer = "fast";
    AdjustTiming(part);
    rig.messages.answer.reset();
    AdjustTiming(part);
    EXPECT_EQ(bridge.state().delay, 255);
    EXPECT_EQ(shown[0], "Firmware Version? \nZentrel bench bridge 1.0");
    EXPECT_EQ(shown[1], "USB Settings? USB timing constant (10 is power on default, [0-255]) <10>");
    shown.clear();
    rig.session.CommMode_Select = "LPT";
    USBVersion(part);
    AdjustTiming(part);
    EXPECT_THAT(shown, ElementsAre("USB mode not selected", "USB mode not selected"));
}

} // namespace
} // namespace zentrel
