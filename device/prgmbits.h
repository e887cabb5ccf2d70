#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zentrel {

class cPart;
class cRegister;

/// One named field, member of `Part.PrgmBits`: a run of bits in a register word, and the rule that
/// turns them into a number and back. The field stores no value; every read goes to the register.
/// It never talks to the device.
///
/// A field is of one of four kinds, by its arrays (an array of one element counts as absent):
/// plain (neither), a value list (value array), a text list (string array), a coded list (both;
/// the strings are the codes). Names of registers and other fields are resolved at each use; one
/// that leads nowhere throws NotFound and leaves all words as they were.
class cPrgmBits {
  public:
    cPrgmBits(cPart& part, std::string id, std::string reg, std::int16_t position,
              std::int16_t length, bool display);

    cPart& Part() const { return part_; }
    cPart& Parent() const { return part_; }

    std::string ID;
    std::string Register;  ///< Name of the register that holds the bits.
    std::int16_t Position; ///< Lowest bit; below 0 the field has no bits: a constant of a list.
    std::int16_t Length;   ///< Number of bits.
    bool Display;          ///< The field has a control on the Bits/Pins tab.
    double ZeroValue = 0;  ///< The value at bits 0.
    double StepValue = 1;  ///< The value of one bit step.
    std::string StepValueBitName; ///< A field whose `Value` replaces `StepValue`.
    double MinimumValue = 0;
    double MaximumValue = 0;           ///< Only a number above 0 limits anything.
    std::string Units;                 ///< Appended to `Text`.
    bool Polarity = false;             ///< The field has a sign bit.
    std::int16_t PolarityPosition = 0; ///< The sign's bit number in the same register.
    std::string FormatString;          ///< Number format for `Text`; scripts set it.
    bool DataInverted = false;         ///< The bits are stored in reversed order.
    bool PolarityInverted = false;     ///< Sign bit 1 means negative.
    std::string LinkedBits;            ///< The field that holds the next higher part.
    std::string MirrorBits;            ///< A field that follows this one.
    std::string GreaterBitName;        ///< The field that limits this one...
    bool GreaterEqual = false;         ///< ...from below; false: from above.
    std::string Description;
    std::string script_on_load, script_before_prog, script_after_prog; ///< Procedures...
    std::string script_name;                                           ///< ...of this module.

    /// The raw bits with the linked parts above them; -1 for a field without bits. A linked field
    /// that doesn't exist is told in a message and counts as absent.
    double BitValue() const;
    /// Writes the bits (the magnitude of `v`; each part of a chain takes its own), between the
    /// before and after hooks. A chain is written on 32 bits: throws Overflow beyond.
    void SetBitValue(double v);

    /// The number that the bits mean.
    double Value() const;
    /// Writes the nearest number that the field can hold, within its limits. The field that
    /// mirrors this one gets what was really taken.
    void SetValue(double d);

    /// `Value` as text with its units, or the selected text of a list.
    std::string Text() const;

    /// One step of the bits towards the positive or the negative end, through zero for a signed
    /// field; a coded list goes round.
    void Increment();
    void Decrement();
    /// Inverts a field of one bit; a longer one counts up and wraps.
    void ToggleBit();

    void SetPositive();
    void SetNegative();
    std::int16_t PolarityValue() const; ///< +1 or -1.

    std::int16_t TotalLength() const; ///< With all linked parts.
    double Maximum() const;           ///< The largest number that the bits or lists can give.
    std::int32_t Minimum() const;     ///< -Maximum for a signed field, else 0.
    std::int16_t ArrayCount() const;  ///< Entries of the list; 0 for a plain field.

    void SetValueArray(std::vector<double> values);
    void SetStringArray(std::vector<std::string> strings);
    const std::vector<double>& ValueArray() const { return values_; }
    const std::vector<std::string>& StringArray() const { return strings_; }
    /// Copies the string array out and returns its upper bound.
    std::int16_t GetStringArray(std::vector<std::string>& out) const;

    /// Selects the list entry with that text, letters in any case; else writes `s` as a number.
    /// A text that is neither does nothing.
    void SetValueText(std::string_view s);
    /// The selected text, or "NOSTRING" without one.
    std::string GetValueText() const;

    /// Index of the field's entry in its file.
    int entry = 0;

  private:
    bool hasValues() const { return values_.size() > 1; }
    bool hasStrings() const { return strings_.size() > 1; }
    bool isCodedList() const { return hasValues() && hasStrings(); }
    bool isPlain() const { return !hasValues() && !hasStrings(); }

    cRegister& Reg() const;
    cPrgmBits& F(std::string_view name) const;
    double raw() const;
    double step() const;
    void RunHook(const std::string& procedure) const;
    void WriteSign(bool positive);

    double ReadValue() const;
    double ValueAt(std::int32_t index) const;
    const std::string& StringAt(std::int32_t index) const;
    double NumberAt(std::int32_t index) const;
    std::int32_t ListIndex() const;
    /// Index of the string whose number equals `code`, or -1.
    int FindCode(std::int32_t code) const;

    double KeptByGreater(double d) const;
    double WithinLimits(double d) const;
    double StorePlain(double d);
    double StoreListed(double d);
    template<typename NumberOf>
    int Nearest(int count, double d, NumberOf numberOf) const;
    void StepTo(double bits);
    void FollowGreater();

    cPart& part_;
    std::vector<std::string> strings_{std::string()};
    std::vector<double> values_{0.0};
};

} // namespace zentrel
