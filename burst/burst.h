#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "device/bit_word.h"

namespace zentrel {

class cPart;

/// What a burst command does.
enum class BurstKind : std::int16_t { LoadRegister = 0, ChangePins = 1, Delay = 2 };

/// One prepared action of a burst, member of `Part.BurstCmds`. It holds what the registers and pins
/// held when it was built, as port states ready to go out, so that replaying it computes nothing.
class cBurst {
  public:
    cBurst(cPart& part, BurstKind command) : Command(command), part_(part) {}

    cPart& Part() const { return part_; }

    std::string Description; ///< The line shown in the list.
    std::int32_t Delay = 0;  ///< Loop passes of a delay.
    BurstKind Command;
    std::string RegisterName;        ///< Of a load: the register's key.
    std::int16_t OutputPinValue = 0; ///< The device's output state when the command was built.
    bool LowByte = false;
    bool useTrigger = false; ///< The trigger pin was enabled when the command was built.

    /// The register word of a load, the count of a delay, 0 for a pin command. Setting it builds
    /// the vector in the device's present route and pin positions.
    double Register() const { return register_; }
    void SetRegister(double value);
    /// A load of a word at its full width; `Register` is its nearest double.
    void SetWord(const BitWord& word);

    /// The prepared port states: the whole word of a load without output pins; the state of a pin
    /// command in element 0 of two; one unused element of a delay.
    const std::vector<std::int16_t>& vector() const { return vector_; }
    /// The upper index of the vector, and its elements; an index beyond throws OutOfRange.
    int GetRegLoad_Count() const { return static_cast<int>(vector_.size()) - 1; }
    std::int16_t GetRegLoad(int index) const;
    void SetRegLoad(int index, std::int16_t value);

    /// For a load, three rows of digits: clock, data and latch enable in each port state. For the
    /// others the description.
    std::string Pattern() const;

    /// Takes over everything that `other`, a command of the same device, holds.
    void Assign(cBurst&& other);

    /// Makes the command mean the same pins under another route.
    void ConvertRoute(std::string_view from, std::string_view to);

    /// Plays the command on the present route. Failures don't stop a burst.
    void Execute();

  private:
    std::int16_t PinState() const;
    void PlayLoad() const;
    void PlayPins() const;
    void PlayDelay() const;

    cPart& part_;
    double register_ = 0;
    BitWord word_; // of a load, at full width
    std::vector<std::int16_t> vector_;
};

} // namespace zentrel
