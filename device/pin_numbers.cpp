#include "device/pin_numbers.h"

#include <array>
#include <bit>
#include <cmath>

#include "device/errors.h"
#include "form/session.h"

namespace zentrel {
namespace {

struct PinBit {
    std::int32_t pin;
    int bit;
};

// Lines of the parallel port that leave the general rule, pin n on bit n-1. Pins 3 and 4 cross.
constexpr std::array<PinBit, 11> kLptLines{{{3, 3},
                                            {4, 2},
                                            {10, 8},
                                            {11, 10},
                                            {12, 11},
                                            {14, 9},
                                            {1500, 19},
                                            {1300, 20},
                                            {1200, 21},
                                            {1000, 22},
                                            {1100, 23}}};

// The crossing and shifted lines that a mask is looked up by; the rest go by the logarithm.
constexpr std::array<std::int32_t, 9> kLptInverse{3, 4, 10, 14, 1000, 1100, 1200, 1300, 1500};

constexpr std::array<std::int32_t, 12> kOptions{1, 2, 3, 4, 5, 6, 7, 8, 10, 11, 12, 14};
constexpr std::array<std::int32_t, 5> kInputOptions{1500, 1300, 1200, 1000, 1100};

constexpr int kFirstInput = 1000;

constexpr std::int32_t Bit(int bit) {
    return static_cast<std::int32_t>(std::uint32_t{1} << bit);
}

const PinBit* FindLptLine(std::int32_t pin) {
    for (const PinBit& line : kLptLines) {
        if (line.pin == pin) return &line;
    }
    return nullptr;
}

template<typename Convert>
std::int32_t SumOverBits(std::int32_t mask, Convert convert) {
    std::int64_t sum = 0;
    for (int bit = 0; bit < kPinMaskBits; ++bit) {
        if ((mask & Bit(bit)) != 0) sum += convert(bit);
    }
    return static_cast<std::int32_t>(sum);
}

} // namespace

std::int32_t LptPinToPortValue(std::int32_t pin) {
    if (pin >= kFirstInput) pin -= pin % 100;
    if (const PinBit* line = FindLptLine(pin)) return Bit(line->bit);
    if (pin == 0 || pin == 13 || pin < 0) return 0;
    if (pin > 31) throw Overflow("pin " + std::to_string(pin) + " has no port bit");
    return Bit(pin - 1);
}

std::int32_t LptPortValueToPin(std::int32_t value) {
    if (value <= 0) return 0;
    for (const std::int32_t pin : kLptInverse) {
        if (Bit(FindLptLine(pin)->bit) == value) return pin;
    }
    return static_cast<std::int32_t>(std::nearbyint(std::log2(static_cast<double>(value)) + 1.0));
}

std::optional<std::int32_t> PinCLHeader2USBLogicalPosition(std::int32_t pin) {
    if (pin == 0 || pin == -1) return 0;
    if (pin >= 1 && pin <= 8) return Bit(pin - 1);
    if (pin >= 10 && pin <= 12) return Bit(pin - 2);
    if (pin == 14) return Bit(12);
    if (pin >= kFirstInput) {
        if (const PinBit* line = FindLptLine(pin)) return Bit(line->bit);
    }
    return {};
}

std::int32_t UsbPortValueToPin(std::int32_t value) {
    if (value <= 0 || !std::has_single_bit(static_cast<std::uint32_t>(value))) return 0;
    const int bit = std::countr_zero(static_cast<std::uint32_t>(value));
    if (bit <= 7) return bit + 1;
    if (bit <= 10 || bit == 12) return bit + 2;
    return 0;
}

std::int32_t PinToPortValue(std::string_view mode, std::int32_t pin) {
    if (mode == kRouteLpt) return LptPinToPortValue(pin);
    if (mode == kRouteUsb) return PinCLHeader2USBLogicalPosition(pin).value_or(0);
    return 0;
}

std::int32_t PortValueToPin(std::string_view mode, std::int32_t value) {
    if (mode == kRouteLpt) return LptPortValueToPin(value);
    if (mode == kRouteUsb) return UsbPortValueToPin(value);
    return 0;
}

std::int32_t PinMaskToPortValue(std::string_view mode, std::int32_t mask) {
    return SumOverBits(mask, [&](int bit) { return PinToPortValue(mode, bit + 1); });
}

std::int32_t PortValueToPinMask(std::string_view mode, std::int32_t value) {
    return SumOverBits(value, [&](int bit) -> std::int32_t {
        const std::int32_t pin = PortValueToPin(mode, Bit(bit));
        return pin >= 1 && pin <= kPinMaskBits ? Bit(pin - 1) : 0;
    });
}

std::int32_t CutComposite(std::string_view mode, std::int32_t pin) {
    if (pin < 0) return pin;
    if (mode == kRouteUsb) return pin % 100;
    if (mode == kRouteLpt) return pin - pin % 100;
    return pin;
}

std::optional<std::int32_t> OptionToPin(int option) {
    if (option < 0 || option >= static_cast<int>(kOptions.size())) return {};
    return kOptions[static_cast<std::size_t>(option)];
}

std::optional<std::int32_t> InputOptionToPin(int option) {
    if (option < 0 || option >= static_cast<int>(kInputOptions.size())) return {};
    return kInputOptions[static_cast<std::size_t>(option)];
}

int PinToOption(std::int32_t pin) {
    for (std::size_t i = 0; i < kInputOptions.size(); ++i) {
        if (kInputOptions[i] == pin) return static_cast<int>(i);
    }
    if (pin >= 1 && pin <= 8) return pin - 1;
    if (pin >= 10 && pin <= 13) return pin - 2;
    if (pin == 14) return 11;
    return 0;
}

} // namespace zentrel
