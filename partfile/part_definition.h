#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "partfile/ini_file.h"
#include "partfile/ini_text.h"
#include "partfile/problems.h"

/// A part file as plain data: what stands in it, converted, with every default filled in. Reading
/// builds nothing and shows nothing; the device is made from this.
///
/// `entry` is the number of an entry's keys in the file ("NAME07" is entry 7). Whoever writes a
/// key back uses it: an entry that was left out as a duplicate doesn't shift the others.
namespace zentrel {

/// [SETUP].
struct SetupSection {
    std::string version; ///< ZENTREL_VERSION, the format of the file
    std::string commMode;
    std::int16_t registerLength = 24; ///< as it stands; may be below 1
    std::int16_t controlLength = 3;
    std::int16_t address = 0x378;
    std::int16_t clock = 1; ///< connector pin numbers
    std::int16_t data = 2;
    std::int16_t le = 3;
    bool invertClock = false;
    std::string partVersion; ///< VERSION
    std::string versionDescription;
    std::string readbackAddressRegister;
    std::string readbackAddressRegisterName;
};

/// One pin of [PINS].
struct PinEntry {
    int entry = 0;
    std::string name;
    std::int16_t location = 4; ///< connector pin number, or a composite one for a read-back pin
    bool enabled = false;
    bool readBack = false;
};

/// One register of [REGISTERS].
struct RegisterEntry {
    int entry = 0;
    std::string name;
    std::int32_t mask = 3;
    double value = 0;
    bool lowByte = true;
};

/// What TYPE says about a field's control on the bits screen.
enum class FieldControl { kNone, kCheckBox, kSpinBox, kList };

/// One field of [BITS].
struct FieldEntry {
    int entry = 0;
    std::string reg;
    std::string name;
    std::int16_t position = 1;
    std::int16_t length = 1;
    bool display = false;
    std::string frame;
    FieldControl control = FieldControl::kNone;

    /// For SetValueArray and SetStringArray; an empty one isn't set.
    std::vector<double> values;
    std::vector<std::string> strings;

    double minimumValue = 0;
    double maximumValue = 0;
    double zeroValue = 0;
    double stepValue = 1;
    std::string units;
    std::string linkedBits;
    std::string mirrorBits;
    std::string stepValueBitName;
    std::string scriptName;
    std::string scriptOnLoad;
    std::string scriptBeforeProg;
    std::string scriptAfterProg;
    std::string description; ///< composed: head line, DESCRIPTION, DESCRIPTIONWHY
    std::string greaterBits;
    bool greaterThan = true;
    bool polarity = false;
    std::int16_t polarityPosition = 0;
    bool polarityInverted = false;
    bool dataInverted = false;

    /// A field of this name stands before, and this one isn't a counter: its keys are applied to
    /// that field, after the message that it exists already.
    bool repeatsName = false;
};

/// One block of [PLLS]. The ranges stay texts: they are converted at each use.
struct PllEntry {
    int entry = 0;
    std::string name;
    std::string n, r, doubler;
    std::string pd, ipo, tri, np;
    std::string oscInPin, oscBit, fOutPin, fInPin, cpOutPin;
    std::string fractNum, fractDen;
    std::string out0Div, out1Div, out0Pin, out1Pin;
    double oscIn = 10; ///< MHz
    std::string vcoMin, vcoMax, oscMin, oscMax, fpdMin, fpdMax;
    std::string nCheckType, npMidFrequency, nCheckLowRange, nCheckHighRange;
};

/// One output channel of a clock block: names of fields.
struct ClockChannel {
    std::string divider, delay, mux, enable;
};

/// One block of [CLKDISTS].
struct ClkDistEntry {
    int entry = 0;
    std::string name;
    std::int16_t vcoCount = 1;
    std::int16_t clockCount = 0; ///< at most kMaxClockChannels
    std::string pll;
    std::string displayType;
    std::string nDelay, rDelay, inputDiv, inputDivByp, inputMux;
    double refOscFreq = 1; ///< MHz, all three
    double extSrcFreq = 2;
    double intVcoFreq = 3;
    std::vector<ClockChannel> channels; ///< as many as clockCount says
    std::string lfC3, lfR3, lfC4, lfR4, lfC3C4;
    std::int16_t inputDivBypVal = -1;
    std::int16_t inputDivBypClearVal = -1;
};

/// One module of [SCRIPTS].
struct ScriptModule {
    std::string name;
    int lastLine = 0;               ///< SCRIPTLINES
    std::vector<std::string> lines; ///< 0 to lastLine
    /// The lines, each with CR LF behind it.
    std::string Code() const;
};

/// An entry that was left out because its name stands before. Names don't regard case.
struct LeftOutEntry {
    std::string section;
    std::string name;
    int entry = 0;
    int kept = 0; ///< the entry that has the name

    bool operator==(const LeftOutEntry&) const = default;
};

struct PartDefinition {
    SetupSection setup;
    std::vector<PinEntry> pins;
    std::vector<RegisterEntry> registers;
    std::vector<FieldEntry> fields;
    int fieldCount = 0; ///< COUNT of [BITS], entries left out included
    std::vector<PllEntry> plls;
    std::vector<ClkDistEntry> clkDists;
    std::vector<std::string> modes; ///< captions
    bool executeScripts = false;
    std::vector<ScriptModule> scripts;

    std::vector<LeftOutEntry> leftOut; ///< counters alone in [BITS], none of [MODES], [SCRIPTS]
    std::vector<Problem> problems;     ///< what couldn't be read, duplicates included
};

constexpr int kMaxClockChannels = 8;
/// List entries of a whole file that are read or filled in; a list beyond is left empty. The same
/// bound holds for the lines of all scripts.
constexpr int kMaxListedEntries = 1'000'000;

/// Reads a part file through the ini operations, in one read scope. A missing file is no problem
/// and gives all defaults.
PartDefinition ReadPartDefinition(IniFiles& files, std::string_view path);

/// The same from a text; `file` is what problems name.
PartDefinition ReadPartDefinition(const IniText& text, std::string_view file);

/// As a device is loaded: in one scope, the file is brought to the current format and read. When
/// the file can't be written the load goes on with what would have been written, and
/// files.TakeWriteFailures() tells why.
PartDefinition LoadPartDefinition(IniFiles& files, std::string_view path);

/// "CLK_DIV_0301" and its like: key word, first and second number in two digits at least.
std::string TwoNumberKey(std::string_view word, int first, int second);

} // namespace zentrel
