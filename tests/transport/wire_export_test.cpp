#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/transport/wire_rig.h"
#include "transport/monitor/wire_export.h"
#include "transport/monitor/wire_picture.h"
#include "transport/readback.h"

namespace zentrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::vector<std::string> LinesOfText(const std::string& text, std::string_view end) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t stop = text.find(end, at);
        lines.push_back(text.substr(at, stop - at));
        at = stop == std::string::npos ? text.size() : stop + end.size();
    }
    return lines;
}

// "0101", a character a step.
std::string Levels(const WirePicture& picture, std::string_view name) {
    std::string levels;
    for (const WirePicture::Line& line : picture.lines) {
        for (int step = 0; line.name == name && step < picture.steps; ++step)
            levels += line.High(step) ? '1' : '0';
    }
    return levels;
}

std::string BitsOf(const WirePicture& picture) {
    std::string bits;
    for (const WirePicture::Bit& bit : picture.bits)
        bits += std::string(bit.readBack ? "r" : "") + (bit.high ? "1" : "0") +
                (bit.changed ? "! " : " ");
    return bits;
}

TEST(WirePicture, shows_every_write_of_a_word_on_the_parallel_port) {
    WireRig rig(kRouteLpt, 4);
    LoadValue(rig.part, 0b1011);
    const WirePicture picture = PictureOf(rig.Last());
    // A state is two writes, data port and control port, of which the first moves these lines.
    EXPECT_EQ(Levels(picture, "CLK"), "0011001100110011000000");
    EXPECT_EQ(Levels(picture, "DATA"), "1111000011111111000000");
    EXPECT_EQ(Levels(picture, "LE"), "0000000000000000001100");
    EXPECT_EQ(BitsOf(picture), "1 0 1 1 ");
    ASSERT_EQ(picture.bits.size(), 4U);
    EXPECT_EQ(picture.bits[1].from, 4);
    EXPECT_EQ(picture.bits[1].to, 8);
    EXPECT_EQ(picture.bits[1].number, 2);
    EXPECT_NEAR(picture.stepNs, 10000.0 / 22, 1e-9) << "10 us between the first write and the last";
    EXPECT_FALSE(picture.estimated);
}

TEST(WirePicture, shows_what_the_bridge_does_with_a_packet) {
    WireRig rig(kRouteUsb, 12);
    LoadRegister(rig.part, "R2");
    rig.part.PrgmBits("RB_ADDR").SetBitValue(5);
    LoadRegister(rig.part, "R2");
    const WirePicture picture = PictureOf(rig.Last());
    EXPECT_EQ(Levels(picture, "CLK"), "010010010010010010010010010010010010000");
    EXPECT_EQ(Levels(picture, "DATA"), "000111000111000000000000000000111000000");
    EXPECT_EQ(Levels(picture, "LE"), "000000000000000000000000000000000000010");
    EXPECT_EQ(Levels(picture, "Trigger"), Levels(picture, "LE"));
    EXPECT_EQ(BitsOf(picture), "0 1! 0 1! 0 0 0 0 0 0 1 0 ");
    EXPECT_TRUE(picture.estimated);
}

TEST(WirePicture, shows_the_bits_that_come_back) {
    for (const std::string_view route : {kRouteLpt, kRouteUsb}) {
        WireRig rig(route, 12);
        rig.part.Registers("R1").SetBits(0b10110001, 4, 8);
        LoadRegister(rig.part, "R1");
        QVX4100ReadRegister(rig.part, "R1");
        EXPECT_THAT(BitsOf(PictureOf(rig.Last())), HasSubstr("r1 r0 r1 r1 r0 r0 r0 r1 ")) << route;
    }
}

TEST(Vcd, writes_the_edges_of_a_word_in_time) {
    WireRig rig(kRouteLpt, 4);
    rig.part.PrgmPins.Clear();
    rig.tick = std::chrono::nanoseconds(440); // 20 ns for each of the 22 writes
    LoadValue(rig.part, 0b1011);
    auto lines = LinesOfText(VcdOf(rig.All()), "\n");
    lines.erase(lines.begin()); // the date
    EXPECT_THAT(lines,
                ElementsAre("$version Zentrel wire monitor $end", "$timescale 10 ns $end",
                            "$scope module board $end", "$var wire 1 ! CLK $end",
                            "$var wire 1 \" DATA $end", "$var wire 1 # LE $end", "$upscope $end",
                            "$enddefinitions $end", "#0", "$dumpvars", "0!", "0\"", "0#", "$end",
                            "#100", "1\"", "#104", "1!", "#108", "0!", "0\"", "#112", "1!", "#116",
                            "0!", "1\"", "#120", "1!", "#124", "0!", "#128", "1!", "#132", "0!",
                            "0\"", "#136", "1#", "#140", "0#", "#244"));
}

TEST(Vcd, cuts_long_pauses_and_keeps_short_ones) {
    const auto between = [](std::chrono::microseconds pause) {
        WireRig rig(kRouteLpt, 4);
        rig.tick = std::chrono::nanoseconds(440);
        LoadValue(rig.part, 0);
        rig.now += pause;
        LoadValue(rig.part, 0);
        const auto lines = LinesOfText(VcdOf(rig.All()), "\n");
        return std::stoi(lines.back().substr(1));
    };
    const int near = between(std::chrono::microseconds(0));
    EXPECT_EQ(between(std::chrono::microseconds(50)), near + 5000);
    EXPECT_EQ(between(std::chrono::hours(8)), between(std::chrono::milliseconds(1)));
}

TEST(Csv, has_a_line_for_each_record_and_quotes_what_needs_it) {
    WireRig rig(kRouteUsb);
    usbSetTriggerActive(rig.part, 0);
    rig.NewLines();
    LoadRegister(rig.part, "R0");
    rig.part.PrgmBits("N").SetBitValue(836);
    LoadRegister(rig.part, "R0");
    const auto lines = LinesOfText(CsvOf(rig.All()), "\r\n");
    ASSERT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines[0],
              "Number,Time,Microseconds,Route,Register,Hex,Bits,Changed,Fields,Pins,Read,Remark,"
              "Packets");
    EXPECT_THAT(lines[2],
                HasSubstr(",10,USB,R0,0x123440,000100100011010001000000,000000000000000000010000,"
                          "\"N=836, CP=0.9 mA\",,,acknowledged,> 05 10 12 34 40; < 03 F0 10"));
}

/// The words that sigrok's SPI decoder reads out of a dump.
std::vector<std::uint64_t> SigrokReads(const std::string& dump, const std::string& options) {
    const auto folder = std::filesystem::temp_directory_path();
    const auto file = folder / ("zentrel_wire_" + std::to_string(getpid()) + ".vcd");
    std::ofstream(file, std::ios::binary) << dump;
    const std::string command = "sigrok-cli -I vcd -i '" + file.string() +
                                "' -P spi:clk=CLK:mosi=DATA:cs=LE:cs_polarity=active-low" +
                                options + " -A spi=mosi-data";
    std::vector<std::uint64_t> words;
    if (FILE* pipe = popen(command.c_str(), "r")) {
        char buffer[256];
        while (std::fgets(buffer, sizeof buffer, pipe) != nullptr)
            words.push_back(
                std::stoull(std::string(buffer).substr(sizeof "spi-1: " - 1), nullptr, 16));
        pclose(pipe);
    }
    std::filesystem::remove(file);
    return words;
}

// The engineer opens our dump in a logic analyser's program, which knows nothing of ours: latch
// enable frames a word as an SPI chip select does.
TEST(Vcd, a_logic_analysers_spi_decoder_reads_the_words_that_were_sent) {
    if (std::system("sigrok-cli --version >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "sigrok-cli isn't installed";
    for (const std::string_view route : {kRouteLpt, kRouteUsb}) {
        for (const bool inverted : {false, true}) {
            for (const int bits : {12, 24, 32}) {
                SCOPED_TRACE(std::string(route) + (inverted ? " inverted " : " ") +
                             std::to_string(bits));
                WireRig rig(route, bits);
                rig.part.InvertClock = inverted;
                rig.part.Registers("R1").SetBits(0x8A5, static_cast<std::int16_t>(bits - 12), 12);
                usbSetupDevice(rig.part);
                UpdateOutputPins(rig.part);
                for (const char* name : {"R0", "R1", "R2", "R1"})
                    LoadRegister(rig.part, name);
                std::vector<std::uint64_t> sent;
                for (const LatchedWord& word : rig.board().history())
                    sent.push_back(word.word.low());
                EXPECT_EQ(sent.size(), 4U);
                const auto read = SigrokReads(VcdOf(rig.All()),
                                              ":wordsize=" + std::to_string(bits) +
                                                  (inverted ? ":cpol=0:cpha=1" : ":cpol=0:cpha=0"));
                EXPECT_EQ(read, sent);
            }
        }
    }
}

} // namespace
} // namespace zentrel
