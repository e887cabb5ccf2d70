#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "device/bit_word.h"

namespace zentrel {

class cPart;

/// What is needed to read a word of a device, as it was when the word went out: a record stays
/// readable when another device has long been loaded.
struct WireMap {
    /// How one field reads inside a word.
    struct Field {
        std::string name;
        int reg = 0; ///< Position of its register, counted from 1.
        int position = 0, length = 0;
        bool inverted = false;
        /// Its value hangs on other words too: it is shown by its own bits.
        bool bitsOnly = false;
        double zero = 0, step = 1;
        bool hasSign = false;
        int signBit = 0;
        bool signInverted = false;
        std::string units, format;
        std::vector<double> values;
        std::vector<std::string> strings;

        /// The value inside `word` as text; the bits as a number where a list has no such entry.
        std::string Text(const BitWord& word) const;
        /// The field's bits, as a mask over the word.
        BitWord Mask() const;
    };
    struct Pin {
        std::string name;
        std::uint16_t mask = 0;
        bool readBack = false;
    };

    /// What a map was made from; a device that equals it needs no other.
    struct Source {
        unsigned device = 0;
        int registers = 0, fields = 0, pins = 0;
        std::uint64_t pinPlaces = 0; ///< A sum over the pins' masks.
        std::int32_t clock = 0, data = 0, le = 0, input = 0;
        std::int16_t address = 0, length = 0, control = 0;
        bool invertClock = false, usb = false;
        bool operator==(const Source&) const = default;
    };

    static Source SourceOf(const cPart& part);
    static std::shared_ptr<const WireMap> Of(const cPart& part);

    /// The pins of `mask` by name, "pin 5" for one that the device doesn't name.
    std::string PinName(std::uint16_t mask) const;
    /// All output pins that the device names.
    std::uint16_t Outputs() const;

    Source source;
    std::string device;
    std::vector<std::string> registers;
    std::vector<Field> fields; ///< In the part file's order.
    std::vector<Pin> pins;
    std::uint16_t trigger = 0;
};

} // namespace zentrel
