#include <array>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/transport/wire_rig.h"
#include "transport/monitor/wire_export.h"
#include "transport/readback.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(WireMonitor, a_word_on_the_parallel_port_is_listed_with_register_fields_and_pins) {
    WireRig rig;
    rig.part.PrgmPins("CE").SetEnabled(true);
    LoadRegister(rig.part, "R0");
    LoadRegister(rig.part, "R1");
    EXPECT_THAT(rig.Lines(),
                ElementsAre("LPT R0 0x123450 N=837, CP=0.9 mA; pins CE=1, Trigger=0, TUNE=0",
                            "LPT R1 0xABCDE1 OFFSET=111"));
}

TEST(WireMonitor, a_word_over_usb_is_listed_with_its_packet_and_answer) {
    WireRig rig(kRouteUsb);
    LoadRegister(rig.part, "R0");
    EXPECT_THAT(rig.Lines(),
                ElementsAre("USB R0 0x123450 N=837, CP=0.9 mA; pins Trigger pulse; acknowledged"))
        << "the bridge pulses an active trigger with each word";
    const auto packets = WirePackets(rig.Last());
    ASSERT_EQ(packets.size(), 2U);
    EXPECT_TRUE(packets[0].sent);
    EXPECT_EQ(WireBytes(packets[0].bytes), "05 10 12 34 50");
    EXPECT_EQ(WirePacketName(packets[0]), "Send word");
    EXPECT_EQ(WireBytes(packets[1].bytes), "03 F0 10");
    EXPECT_EQ(WirePacketName(packets[1]), "Acknowledged: Send word");
}

TEST(WireMonitor, the_address_bits_of_the_word_name_the_register_whoever_sent_it) {
    WireRig rig;
    LoadValue(rig.part, 0x000AB1);
    LoadValue(rig.part, 0x000ABF);
    rig.NewLines();
    LoadValue(rig.part, 0x000AB1);
    LoadValue(rig.part, 0x000ABF);
    EXPECT_THAT(rig.Lines(), ElementsAre("LPT R1 0x000AB1 OFFSET=85.5", "LPT ? 0x000ABF"));
}

TEST(WireMonitor, changed_bits_are_those_since_the_same_register_went_out_last) {
    for (const std::string_view route : {kRouteLpt, kRouteUsb}) {
        SCOPED_TRACE(route);
        WireRig rig(route);
        LoadRegister(rig.part, "R0");
        EXPECT_TRUE(WireChangedBits(rig.Last()).none()) << "there was no word before";
        LoadRegister(rig.part, "R1");
        rig.part.PrgmBits("N").SetBitValue(836);
        LoadRegister(rig.part, "R0");
        EXPECT_EQ(WireChangedBits(rig.Last()), BitWord(0x10));
        const auto fields = WireFields(rig.Last());
        ASSERT_EQ(fields.size(), 2U);
        EXPECT_TRUE(fields[0].changed) << fields[0].name;
        EXPECT_FALSE(fields[1].changed) << fields[1].name;
    }
}

TEST(WireMonitor, pins_set_by_themselves_are_a_record_of_their_own) {
    WireRig rig;
    UpdateOutputPins(rig.part);
    EXPECT_THAT(rig.NewLines(), ElementsAre("LPT Pins pins CE=0, Trigger=0, TUNE=0"))
        << "what the lines were before wasn't known";
    UpdateOutputPins(rig.part);
    EXPECT_THAT(rig.Lines(), IsEmpty()) << "nothing moved";
    // A pin on each of the two ports, and a word right behind them.
    rig.part.PrgmPins("CE").SetEnabled(true);
    rig.part.PrgmPins("TUNE").SetEnabled(true);
    UpdateOutputPins(rig.part);
    LoadRegister(rig.part, "R2");
    rig.part.PrgmPins("CE").SetEnabled(false);
    LoadRegister(rig.part, "R2");
    EXPECT_THAT(rig.Lines(), ElementsAre("LPT Pins pins CE=1, TUNE=1", "LPT R2 0x000002 RB_ADDR=0",
                                         "LPT R2 0x000002 RB_ADDR=0; pins CE=0"));
}

TEST(WireMonitor, latch_enable_that_is_held_by_a_pin_state_is_told) {
    WireRig rig;
    LoadRegister(rig.part, "R2");
    rig.NewLines();
    const auto le = static_cast<std::int16_t>(rig.part.LEPositionValue());
    SendStates(rig.part, std::array{static_cast<std::int16_t>(le | 0x10)});
    LoadRegister(rig.part, "R2");
    EXPECT_THAT(rig.Lines(),
                ElementsAre("LPT Pins pins CE=1, LE=1", "LPT R2 0x000002 RB_ADDR=0; pins CE=0"));
}

TEST(WireMonitor, the_lines_of_the_bus_may_lie_on_the_control_port) {
    for (const bool inverted : {false, true}) {
        WireRig rig;
        rig.part.InvertClock = inverted;
        rig.part.SetClockPosition(10);
        rig.part.SetDataPosition(11);
        rig.part.SetLEPosition(14);
        rig.part.PrgmPins("TUNE").SetPosition(std::int32_t{12});
        LoadRegister(rig.part, "R0");
        rig.NewLines();
        LoadRegister(rig.part, "R1");
        rig.part.PrgmPins("CE").SetEnabled(true);
        LoadRegister(rig.part, "R1");
        std::vector<std::string> words;
        for (const std::string& line : rig.Lines()) {
            if (line.find("Pins") == std::string::npos) words.push_back(line.substr(0, 15));
        }
        EXPECT_THAT(words, ElementsAre("LPT R1 0xABCDE1", "LPT R1 0xABCDE1")) << inverted;
    }
}

TEST(WireMonitor, pins_over_usb_are_one_record_with_all_packets_of_the_buffer) {
    WireRig rig(kRouteUsb);
    UpdateOutputPins(rig.part);
    rig.NewLines();
    rig.part.PrgmPins("CE").SetEnabled(true);
    UpdateOutputPins(rig.part);
    EXPECT_THAT(rig.Lines(), ElementsAre("USB Pins pins CE=1; acknowledged"));
    EXPECT_EQ(WirePackets(rig.Last()).size(), 8U);
}

TEST(WireMonitor, a_trigger_that_rises_with_latch_enable_is_a_pulse) {
    WireRig rig;
    LoadRegister(rig.part, "R2");
    rig.part.PrgmPins("Trigger").SetEnabled(true);
    LoadRegister(rig.part, "R2");
    EXPECT_EQ(WirePins(rig.Last()), "Trigger pulse");

    WireRig usb(kRouteUsb);
    usbSendSPI_Burst(usb.part, BitWord(0x123450), 0, 1);
    EXPECT_THAT(usb.Lines(),
                ElementsAre("USB R0 0x123450 N=837, CP=0.9 mA; pins CE=0, TUNE=0, Trigger pulse; "
                            "acknowledged"));
    usbSendSPI_Burst(usb.part, BitWord(0x123450), 0x10, 1);
    EXPECT_EQ(WirePins(usb.Last()), "CE=1, Trigger pulse");
    EXPECT_EQ(WirePackets(usb.Last()).size(), 16U);
}

TEST(WireMonitor, a_read_back_belongs_to_the_word_that_asked_for_it) {
    for (const std::string_view route : {kRouteLpt, kRouteUsb}) {
        SCOPED_TRACE(route);
        WireRig rig(route);
        LoadRegister(rig.part, "R1");
        rig.NewLines();
        EXPECT_EQ(QVX4100ReadRegister(rig.part, "R1"), 0xABCDE);
        const WireRecord& record = rig.Last();
        EXPECT_EQ(rig.history.size(), 1U);
        EXPECT_EQ(WireName(record), "R2");
        EXPECT_EQ(WireReadBack(record), "0xA BCDE");
        EXPECT_FALSE(WireFailed(record)) << WireRemark(record);
    }
}

TEST(WireMonitor, what_the_bridge_refuses_loses_or_leaves_unanswered_is_told) {
    WireRig rig(kRouteUsb);
    const auto load = [&](BridgeFaults faults) {
        rig.bench.bridge.faults = std::move(faults);
        InitUSBInterface(rig.part);
        rig.NewLines();
        LoadRegister(rig.part, "R1");
        return rig.Last();
    };
    struct Case {
        BridgeFaults faults;
        std::string remark;
        bool latched;
    };
    Case cases[5];
    cases[0] = {{}, "acknowledged", true};
    cases[1] = {{}, "refused, code 99", false};
    cases[1].faults.refused = {usb::kSendWord};
    cases[2] = {{}, "no answer", true};
    cases[2].faults.silent = true;
    cases[3] = {{}, "not sent whole", false};
    cases[3].faults.shortSend = 3;
    cases[4] = {{}, "another command was acknowledged", true};
    cases[4].faults.wrongOpcode = usb::kVersion;
    for (const Case& c : cases) {
        const WireRecord record = load(c.faults);
        EXPECT_EQ(WireRemark(record), c.remark);
        EXPECT_EQ(WireName(record), "R1") << c.remark;
        EXPECT_EQ(record.latched, c.latched) << c.remark;
        EXPECT_EQ(WireFailed(record), c.remark != "acknowledged") << c.remark;
    }
}

TEST(WireMonitor, a_refused_word_of_a_burst_is_listed_as_not_sent_to_the_chip) {
    WireRig rig(kRouteUsb);
    rig.bench.bridge.faults.refused = {usb::kExecuteBuffer};
    usbSendSPI_Burst(rig.part, BitWord(0x123450), 0, 0);
    EXPECT_THAT(rig.Lines(), ElementsAre("USB R0 0x123450 N=837, CP=0.9 mA; refused, code 99"));
    EXPECT_TRUE(rig.Last().edges.empty());
}

TEST(WireMonitor, setting_up_the_bridge_is_listed_command_by_command) {
    WireRig rig(kRouteUsb);
    usbSetupDevice(rig.part);
    EXPECT_THAT(rig.Lines(),
                ElementsAre("USB Bridge opened", "USB Pin configuration acknowledged",
                            "USB Trigger pin acknowledged", "USB Trigger on or off acknowledged",
                            "USB Word format acknowledged"));
    rig.NewLines();
    rig.bench.PullBridge();
    EXPECT_THAT(rig.Lines(), ElementsAre("USB Bridge not opened error 2"));
}

TEST(WireMonitor, replies_that_arrive_in_pieces_still_belong_to_their_commands) {
    WireRig rig(kRouteUsb);
    rig.bench.bridge.faults.split = 2;
    usbSetTriggerActive(rig.part, 0);
    rig.NewLines();
    LoadRegister(rig.part, "R0");
    LoadRegister(rig.part, "R1");
    EXPECT_THAT(rig.Lines(), ElementsAre("USB R0 0x123450 N=837, CP=0.9 mA; acknowledged",
                                         "USB R1 0xABCDE1 OFFSET=111; acknowledged"));
}

// What the record says that the lines did, driven into another board.
TEST(WireMonitor, the_recorded_edges_latch_the_same_words_on_another_board) {
    for (const std::string_view route : {kRouteLpt, kRouteUsb}) {
        for (const bool inverted : {false, true}) {
            for (const int bits : {12, 24, 64, 100}) {
                SCOPED_TRACE(std::string(route) + (inverted ? " inverted " : " ") +
                             std::to_string(bits));
                WireRig rig(route, bits);
                rig.part.InvertClock = inverted;
                usbSetupDevice(rig.part);
                rig.NewLines();
                rig.part.Registers("R1").SetBits(0x2B3, static_cast<std::int16_t>(bits - 12), 12);
                for (const char* name : {"R0", "R1", "R2"})
                    LoadRegister(rig.part, name);

                Board other(rig.part);
                for (const WireRecord* record : rig.All())
                    EdgeTape::Play(record->edges, [&](WireLevels levels, int) {
                        const auto pin = [&](WireLevels line, int number) {
                            return (levels & line) != 0 ? PinBit(number) : PinLevels{0};
                        };
                        other.Drive(pin(wire::kClock, 1) | pin(wire::kData, 2) |
                                        pin(wire::kLatch, 3),
                                    BoardRoute::Lpt);
                    });
                ASSERT_EQ(other.history().size(), 3U);
                for (std::size_t i = 0; i < 3; ++i) {
                    const BitWord& latched = rig.board().history()[i].word;
                    EXPECT_EQ(other.history()[i].word, latched);
                    EXPECT_EQ(rig.history[rig.history.begin() + i].word, latched);
                }
            }
        }
    }
}

TEST(WireMonitor, a_record_stays_readable_when_its_device_has_gone) {
    WireRig rig;
    LoadRegister(rig.part, "R0");
    LoadRegister(rig.part, "R1");
    const auto before = rig.Lines();
    rig.part.ClearFieldsAndRegisters();
    rig.AddRegister("OTHER", 0x7, 0xF);
    LoadRegister(rig.part, "OTHER");
    const auto lines = rig.Lines();
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0], before[0]);
    EXPECT_EQ(lines[1], before[1]);
    EXPECT_EQ(lines[2], "LPT OTHER 0x000007");
    EXPECT_TRUE(WireChangedBits(rig.Last()).none()) << "another device's words don't count";
}

TEST(WireMonitor, with_nobody_following_the_drivers_are_called_directly) {
    WireRig rig;
    EXPECT_NE(static_cast<PortDriver*>(&rig.bench.port), &rig.transport.port());
    rig.history.Rest();
    EXPECT_EQ(static_cast<PortDriver*>(&rig.bench.port), &rig.transport.port());
    LoadRegister(rig.part, "R0");
    EXPECT_EQ(rig.history.size(), 0U);
    rig.history.Follow();
    LoadRegister(rig.part, "R1");
    EXPECT_EQ(rig.history.size(), 1U);
}

TEST(WireMonitor, followers_come_and_go_without_each_other) {
    WireRig rig;
    WireHistory second(rig.monitor);
    second.Follow();
    LoadRegister(rig.part, "R0");
    rig.history.Rest();
    LoadRegister(rig.part, "R1");
    EXPECT_EQ(rig.history.size(), 1U);
    EXPECT_EQ(second.size(), 2U);
}

// A port that is wired up wrongly, a bridge that talks nonsense: listed as it was, and no harm
// done.
TEST(WireMonitor, any_bytes_on_the_wire_make_records_that_can_be_read) {
    std::mt19937 random(7);
    const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    for (const std::string_view route : {kRouteLpt, kRouteUsb}) {
        WireRig rig(route);
        const auto anything = [&](WireListener& wire) {
            std::vector<std::uint8_t> bytes(below(12));
            for (std::uint8_t& byte : bytes)
                byte = static_cast<std::uint8_t>(below(4) == 0 ? below(256) : below(24));
            if (bytes.size() > 1 && below(4) != 0)
                bytes[0] = static_cast<std::uint8_t>(bytes.size());
            const auto address = static_cast<std::uint16_t>(888 + below(3));
            switch (below(8)) {
            case 0:
                return wire.PacketSent(bytes, static_cast<int>(bytes.size() - below(9) / 8));
            case 1:
                if (bytes.size() > 2) bytes[1] = static_cast<std::uint8_t>(240 + below(3));
                return wire.BytesReceived(bytes);
            case 2:
                return wire.PortRead(address, static_cast<std::uint8_t>(below(256)));
            case 3:
                return below(50) == 0 ? wire.BridgeOpened(static_cast<std::int16_t>(below(2)))
                                      : rig.monitor.Settle();
            default:
                wire.PortWritten(address, static_cast<std::uint8_t>(below(256)));
            }
        };
        for (int i = 0; i < 20000; ++i)
            rig.transport.wire().Tell(anything);
        const auto records = rig.All();
        EXPECT_GT(records.size(), 1000U);
        for (const WireRecord* record : records) {
            EXPECT_FALSE(WireLine(*record).empty());
            for (const WirePacket& packet : WirePackets(*record))
                EXPECT_FALSE(WirePacketName(packet).empty());
        }
        EXPECT_THAT(VcdOf(records), HasSubstr("$enddefinitions"));
        EXPECT_THAT(CsvOf(records), HasSubstr("LPT"));
    }
}

TEST(WireHistory, keeps_the_last_words_under_numbers_that_never_come_twice) {
    WireRig rig;
    WireHistory few(rig.monitor, 3);
    few.Follow();
    for (int i = 0; i < 5; ++i)
        LoadValue(rig.part, 0x100 * i + 1);
    rig.monitor.Settle();
    EXPECT_EQ(few.begin(), 2U);
    EXPECT_EQ(few.end(), 5U);
    for (std::uint64_t number = 2; number < 5; ++number)
        EXPECT_EQ(few[number].word, BitWord(0x100 * number + 1));
    few.Clear();
    EXPECT_EQ(few.size(), 0U);
    EXPECT_EQ(few.end(), 5U);
    LoadValue(rig.part, 0x701);
    rig.monitor.Settle();
    EXPECT_EQ(few[5].word, BitWord(0x701));
}

} // namespace
} // namespace zentrel
