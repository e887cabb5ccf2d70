#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "device/keyed_collection.h"
#include "device/prgmbits.h"
#include "device/prgmpin.h"
#include "device/register.h"
#include "device/upward.h"
#include "device/word_journal.h"
#include "form/session.h"

namespace zentrel {

class cBurst;
class cClkDist;
class cPLL;
class Transport;

/// The device: its collections and the settings of its serial interface. The program has one,
/// which scripts and clients know as `Part`; a device change empties and fills it again. It is a
/// root, not the place where subsystems work: those take a cPart and live in their own rooms.
class cPart {
  public:
    explicit cPart(Session& session, Upward upward = Upward::None());
    ~cPart();
    cPart(const cPart&) = delete;
    cPart& operator=(const cPart&) = delete;

    // The device's collections. `Registers` is in load order.
    KeyedCollection<cRegister> Registers{"Registers"};
    KeyedCollection<cPLL> PLLs{"PLLs"};
    /// Key: the decimal text of the count before the add, "0" for the first.
    KeyedCollection<cClkDist> ClkDists{"ClkDists"};
    KeyedCollection<int> pll_tabnames{"pll_tabnames"};         ///< Tab number by PLL name.
    KeyedCollection<int> clkdist_tabnames{"clkdist_tabnames"}; ///< Tab number by block name.
    KeyedCollection<std::string> tab_id_type{"tab_id_type"};   ///< "PLL" or "CLKDIST".
    KeyedCollection<int> tab_id_num{"tab_id_num"};             ///< Index within its kind.
    KeyedCollection<int> tabdata{"tabdata"};                   ///< "tabindex" of each device tab.
    KeyedCollection<std::string> tabnames{"tabnames"};         ///< Scripts' own; unused here.
    KeyedCollection<cPrgmBits> PrgmBits{"PrgmBits"};
    KeyedCollection<cPrgmPin> PrgmPins{"PrgmPins"};
    KeyedCollection<cBurst> BurstCmds{"BurstCmds"};
    KeyedCollection<std::string> MacroCmds{"MacroCmds"}; ///< Scripts' own; unused here.
    KeyedCollection<std::string> Scripts{"Scripts"};     ///< Scripts' own; unused here.
    /// While true a register load leaves latch enable high.
    bool readback_mode = false;

    /// The part name as chosen; empty means no device.
    std::string ID;
    /// Kept for the part file's path; nothing reads it.
    std::string InitFile;
    /// The program itself is writing screen elements: their handlers do nothing.
    bool Updating = false;
    /// Latch enable stays high behind a burst's pin-state command.
    bool LEModeHigh = false;
    /// The device takes data on the other clock phase.
    bool InvertClock = false;
    std::string ReadbackAddressRegister;     ///< Field that selects the register to read back.
    std::string ReadbackAddressRegisterName; ///< Register that holds that field.
    /// "PLL_internalVCO", "PLL_externalVCO", "VCO_extVCO", "Engineering" or "Distribution".
    std::string clkdistDisplayMode;
    /// Base address of the parallel port, as a 16-bit number.
    std::int16_t PortAddress = 0;
    std::int16_t ControlLength = 0; ///< Low bits of a word that are its address and control part.
    std::int32_t InputPinPositionINI = -1; ///< The read-back pin's number as the file has it.

    /// Strides of the panels' repeated elements.
    std::int16_t Lines = 0, Shapes = 0, Labels = 0;
    std::int16_t LinesCLK = 0, ShapesCLK = 0, labelsCLK = 0;
    /// Whether the template element of a kind has been used by the device's first one.
    std::int16_t DoneFirstlblCmbBits = 0, DoneFirstlblCntr = 0, DoneFirstchkPrgmBit = 0,
                 DoneFirstchkPin = 0, DoneFirstfraExternalPin = 0;

    /// Bits of a register word. Setting it rebuilds the bit ruler and resizes the port vector;
    /// throws OutOfRange below 1, and then nothing changes.
    std::int16_t RegisterLength() const { return registerLength_; }
    void SetRegisterLength(std::int16_t bits);

    /// Connector pins of the three serial lines. Only the port mask is stored, so the pin survives
    /// a change of route through RemapToRoute alone.
    std::int32_t ClockPosition() const { return PortValueToPin(clock_); }
    std::int32_t DataPosition() const { return PortValueToPin(data_); }
    std::int32_t LEPosition() const { return PortValueToPin(le_); }
    void SetClockPosition(std::int32_t pin) { clock_ = PinToPortValue(pin); }
    void SetDataPosition(std::int32_t pin) { data_ = PinToPortValue(pin); }
    void SetLEPosition(std::int32_t pin) { le_ = PinToPortValue(pin); }
    std::int32_t ClockPositionValue() const { return clock_; }
    std::int32_t DataPositionValue() const { return data_; }
    std::int32_t LEPositionValue() const { return le_; }
    /// A mask of 0 has no pin; the port screen then stores the line's default mask.
    void SetLineMasks(std::int32_t clock, std::int32_t data, std::int32_t le);

    /// Pin of the read-back input, -1 when the device has none. Setting it cuts a composite number
    /// to the route's half, in the argument too.
    std::int32_t InputPinPosition() const { return inputPin_; }
    void SetInputPinPosition(std::int32_t& pin);
    void SetInputPinPosition(std::int32_t&& pin) { SetInputPinPosition(pin); }
    std::int32_t InputPinPositionValue() const { return input_; }

    // Conversions under the present route.
    /// Shows "Unknown pin position ..." for a pin that the bridge doesn't know, and gives 0.
    std::int32_t PinToPortValue(std::int32_t pin) const;
    std::int32_t PortValueToPin(std::int32_t value) const;
    /// Shows that message for each such pin in the mask.
    std::int32_t PinMaskToPortValue(std::int32_t mask) const;
    std::int32_t PortValueToPinMask(std::int32_t value) const;

    // The output pins: model values; nothing reaches the port before UpdateOutputPins.
    /// The OR of the port masks of all enabled output pins.
    std::int16_t OutputPinValue() const { return outputPins_; }
    /// Takes a mask whose bit numbers are pin numbers, and sets each pin by it.
    void SetOutputPinValue(std::int32_t pinNumbers);
    /// Stores a port word as it stands.
    void SetOutputPinValueDirect(std::int16_t value) { outputPins_ = value; }
    /// Throw Overflow for a mask beyond 16 bits; clearing ignores what lies beyond.
    void SetOutPins(std::int32_t mask);
    void ClearOutPins(std::int32_t mask);
    void ToggleOutPins(std::int32_t mask);
    void ResetOutputPins() { outputPins_ = 0; }
    /// Clears the state, stores the sum of what then reads enabled, and refreshes: ends as 0.
    void RefreshPins();

    bool BurstRunning() const { return burstRunning_; }
    void SetBurstRunning(bool value) { burstRunning_ = value; }

    /// All six refreshes, in their order.
    void UpdateDisplays();

    /// The port states of one register word, reused by every load: 2 * RegisterLength + 3.
    std::vector<std::int16_t>& PortVector() { return portVector_; }

    /// Takes everything out of the device's collections that the file put in.
    void ClearFieldsAndRegisters();

    Session& session() const { return session_; }
    const Upward& upward() const { return upward_; }
    void Connect(const Upward& upward) { upward_ = upward; }
    /// The ports behind the routes; see transport/transport.h. None until the start connects them.
    Transport* transport() const { return transport_; }
    void SetTransport(Transport* transport) { transport_ = transport; }
    WordJournal& journal() { return journal_; }
    const WordJournal& journal() const { return journal_; }

  private:
    friend class UpdatingScope;

    Session& session_;
    Upward upward_;
    Transport* transport_ = nullptr;
    WordJournal journal_;
    std::int16_t registerLength_ = 0;
    std::int32_t clock_ = 0, data_ = 0, le_ = 0;
    std::int32_t inputPin_ = -1, input_ = 0;
    std::int16_t outputPins_ = 0;
    bool burstRunning_ = false;
    bool updatingLeftUp_ = false; // A refresh that failed left the flag behind; nobody holds it.
    std::vector<std::int16_t> portVector_;
};

/// Raises `Updating` for a routine's own writes to elements, and puts back what it found.
class UpdatingScope {
  public:
    explicit UpdatingScope(cPart& part)
        : part_(part), before_(part.Updating && !part.updatingLeftUp_) {
        part.Updating = true;
        part.updatingLeftUp_ = false;
    }
    ~UpdatingScope() {
        part_.Updating = before_ || stay_;
        part_.updatingLeftUp_ = stay_ && !before_;
    }
    UpdatingScope(const UpdatingScope&) = delete;
    UpdatingScope& operator=(const UpdatingScope&) = delete;

    /// For a refresh that gives up: the flag stays up behind it, until the next routine that
    /// raises it is done.
    void StayUp() { stay_ = true; }

  private:
    cPart& part_;
    bool before_;
    bool stay_ = false;
};

/// The same for `bDisplayUpdating`.
class DisplayScope {
  public:
    explicit DisplayScope(cPart& part)
        : session_(part.session()), before_(session_.bDisplayUpdating) {
        session_.bDisplayUpdating = 1;
    }
    ~DisplayScope() { session_.bDisplayUpdating = before_; }
    DisplayScope(const DisplayScope&) = delete;
    DisplayScope& operator=(const DisplayScope&) = delete;

  private:
    Session& session_;
    std::int16_t before_;
};

} // namespace zentrel
