#include <algorithm>
#include <array>
#include <utility>

#include "device/number_text.h"
#include "partfile/part_sections.h"

namespace zentrel {
namespace {

template<typename Block>
using TextKey = std::pair<std::string_view, std::string Block::*>;

constexpr std::array<TextKey<PllEntry>, 28> kPllTexts{{
    {"N", &PllEntry::n},
    {"R", &PllEntry::r},
    {"DOUBLER", &PllEntry::doubler},
    {"PD", &PllEntry::pd},
    {"IPO", &PllEntry::ipo},
    {"TRI", &PllEntry::tri},
    {"NP", &PllEntry::np},
    {"OSCINPIN", &PllEntry::oscInPin},
    {"OSCBIT", &PllEntry::oscBit},
    {"FOUTPIN", &PllEntry::fOutPin},
    {"FINPIN", &PllEntry::fInPin},
    {"CPOUTPIN", &PllEntry::cpOutPin},
    {"FRACTNUM", &PllEntry::fractNum},
    {"FRACTDEN", &PllEntry::fractDen},
    {"OUT0_DIV", &PllEntry::out0Div},
    {"OUT1_DIV", &PllEntry::out1Div},
    {"OUT0PIN", &PllEntry::out0Pin},
    {"OUT1PIN", &PllEntry::out1Pin},
    {"VCO_MIN", &PllEntry::vcoMin},
    {"VCO_MAX", &PllEntry::vcoMax},
    {"OSC_MIN", &PllEntry::oscMin},
    {"OSC_MAX", &PllEntry::oscMax},
    {"FPD_MIN", &PllEntry::fpdMin},
    {"FPD_MAX", &PllEntry::fpdMax},
    {"N_CHECK_TYPE", &PllEntry::nCheckType},
    {"NP_MID_FREQUENCY", &PllEntry::npMidFrequency},
    {"N_CHECK_LOW_RANGE", &PllEntry::nCheckLowRange},
    {"N_CHECK_HIGH_RANGE", &PllEntry::nCheckHighRange},
}};

constexpr std::array<TextKey<ClkDistEntry>, 11> kClkDistTexts{{
    {"PLL", &ClkDistEntry::pll},
    {"NDelay", &ClkDistEntry::nDelay},
    {"RDelay", &ClkDistEntry::rDelay},
    {"INPUT_DIV", &ClkDistEntry::inputDiv},
    {"INPUT_DIV_BYP", &ClkDistEntry::inputDivByp},
    {"INPUT_MUX", &ClkDistEntry::inputMux},
    {"LF_C3", &ClkDistEntry::lfC3},
    {"LF_R3", &ClkDistEntry::lfR3},
    {"LF_C4", &ClkDistEntry::lfC4},
    {"LF_R4", &ClkDistEntry::lfR4},
    {"LF_C3C4", &ClkDistEntry::lfC3C4},
}};

constexpr std::array<TextKey<ClockChannel>, 4> kChannelTexts{{
    {"CLK_DIV_", &ClockChannel::divider},
    {"CLK_DELAY_", &ClockChannel::delay},
    {"CLK_MUX_", &ClockChannel::mux},
    {"CLK_EN_", &ClockChannel::enable},
}};

std::int16_t ReadClockCount(SectionReader& section) {
    const std::int16_t count = section.FloorInt("Clocks", 0);
    const auto used = std::clamp<std::int16_t>(count, 0, kMaxClockChannels);
    if (used != count) section.Note("Clocks", NumberToText(used));
    return used;
}

// In the keys of a channel its number stands ahead of the block's.
ClockChannel ReadChannel(SectionReader& section, int channel) {
    ClockChannel names;
    for (const auto& [word, member] : kChannelTexts) {
        names.*member = section.Text(std::string(word) + KeyNumber(channel));
    }
    return names;
}

} // namespace

void ReadPlls(PartReading& reading) {
    SectionReader section = reading.Section("PLLS");
    EntryNames names("PLLS", reading.part);
    const int count = section.Count();
    for (int i = 0; i < count; ++i) {
        section.SetEntry(i);
        PllEntry pll;
        pll.entry = i;
        pll.name = section.Text("NAME", "PLL" + section.EntryText());
        if (names.Repeats(pll.name, i)) {
            names.LeaveOut(section, pll.name, i);
            continue;
        }
        for (const auto& [word, member] : kPllTexts)
            pll.*member = section.Text(word);
        pll.oscIn = section.Real("OSCIN", 10);
        reading.part.plls.push_back(std::move(pll));
    }
}

void ReadClkDists(PartReading& reading) {
    SectionReader section = reading.Section("CLKDISTS");
    EntryNames names("CLKDISTS", reading.part);
    const int count = section.Count();
    for (int i = 0; i < count; ++i) {
        section.SetEntry(i);
        ClkDistEntry block;
        block.entry = i;
        block.name = section.Text("NAME", "CLKDIST" + section.EntryText());
        if (names.Repeats(block.name, i)) {
            names.LeaveOut(section, block.name, i);
            continue;
        }
        block.vcoCount = section.FloorInt("VCO", 1);
        block.clockCount = ReadClockCount(section);
        block.displayType = section.Text("DISPLAY_TYPE", "PLL_internalVCO");
        for (const auto& [word, member] : kClkDistTexts)
            block.*member = section.Text(word);
        block.refOscFreq = section.Real("RefOSC_Freq", 1);
        block.extSrcFreq = section.Real("ExtSRC_Freq", 2);
        block.intVcoFreq = section.Real("IntVCO_Freq", 3);
        for (int channel = 0; channel < block.clockCount; ++channel) {
            block.channels.push_back(ReadChannel(section, channel));
        }
        block.inputDivBypVal = section.Int("INPUT_DIV_BYP_VAL", -1);
        block.inputDivBypClearVal = section.Int("INPUT_DIV_BYP_CLEAR_VAL", -1);
        reading.part.clkDists.push_back(std::move(block));
    }
}

} // namespace zentrel
