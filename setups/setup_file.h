#pragma once

#include <string>
#include <string_view>

#include "device/errors.h"
#include "partfile/ini_file.h"

namespace zentrel {

class cPart;

/// What a save does with a file of that name.
enum class OldFile {
    Replace, ///< Nothing of it stays.
    Merge,   ///< Keys that aren't written now stay.
};

/// A setup file stopped being usable at one of its keys. What was restored before it stands.
class SetupFileError : public Error {
  public:
    SetupFileError(int number, std::string_view file, std::string_view section,
                   std::string_view key, std::string_view value, const std::string& why);
    const std::string& section() const { return section_; }
    const std::string& key() const { return key_; }

  private:
    std::string section_;
    std::string key_;
};

/// Writes the device's state and burst list to a setup file, whole or not at all. False when the
/// file couldn't be written; `files.TakeWriteFailures()` then tells why.
bool SaveBurstCommands(cPart& part, IniFiles& files, std::string_view sFileName, OldFile old);

/// Restores a setup: registers, crystals, pins and the burst commands, which are added to the list
/// as it stands; then the on-load hooks, then each linked PLL's VCO from its counters. Nothing is
/// sent. A file of another device is refused with a message, and nothing changes. Throws
/// SetupFileError at the first key that the device can't take.
void LoadBurstCommands(cPart& part, IniFiles& files, std::string_view sFileName);

} // namespace zentrel
