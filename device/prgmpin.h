#pragma once

#include <cstdint>
#include <string>

namespace zentrel {

class cPart;

/// One interface pin of the board, member of `Part.PrgmPins`: an output that the device holds, or
/// the input that a read-back comes in by. The pin keeps its port mask only; its number and state
/// follow from that, the route and the device's output state.
class cPrgmPin {
  public:
    cPrgmPin(cPart& part, std::string id, bool readBack);

    cPart& Part() const { return part_; }
    cPart& Parent() const { return part_; }
    const std::string& ID() const { return id_; }

    /// The port mask as 16 bits. An input line of the parallel port lies above them and reads 0.
    std::int16_t Value() const { return static_cast<std::int16_t>(mask_ & 0xFFFF); }
    /// The whole port mask.
    std::int32_t mask() const { return mask_; }
    void SetValue(std::int32_t mask) { mask_ = mask; }

    /// A stored flag without a function; the trigger pin goes by its name, "Trigger".
    bool Trigger() const { return trigger_; }
    void SetTrigger(bool value) { trigger_ = value; }
    /// The pin is the read-back input, not an output.
    bool ReadBack() const { return readBack_; }
    void SetReadBack(bool value) { readBack_ = value; }

    /// The connector pin under the present route. Setting it cuts a read-back pin's composite
    /// number to the route's half, in the argument too.
    std::int32_t Position() const;
    void SetPosition(std::int32_t& pin);
    void SetPosition(std::int32_t&& pin) { SetPosition(pin); }

    /// The pin's state in the device's `OutputPinValue`. A pin with mask 0 counts as enabled.
    /// Setting reaches the model only; throws Overflow for a mask beyond the 16-bit state.
    bool Enabled() const;
    void SetEnabled(bool value);
    void Toggle();

    /// Index of the pin's entry in its file, whatever entries before it were left out.
    int entry = 0;

  private:
    cPart& part_;
    std::string id_;
    std::int32_t mask_ = 0;
    bool trigger_ = false;
    bool readBack_;
};

} // namespace zentrel
