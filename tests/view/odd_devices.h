#pragma once

#include <filesystem>
#include <string>

/// Part files that nobody would ship: what a slip of the pen, or an ambitious chip, asks of the
/// screens.
namespace zentrel::odd {

/// Two clock blocks, one without channels and one that claims nine; a third that only distributes.
inline const std::string kChannels = "ODD-CHANNELS";
/// Twelve PLLs, and 300 fields of all kinds in one frame.
inline const std::string kMany = "ODD-MANY";
/// Names of 200 characters, empty ones and such with "&"; tabs of the same caption; descriptions of
/// 10,000 characters.
inline const std::string kNames = "ODD-NAMES";
/// Neither registers nor fields nor blocks.
inline const std::string kBare = "ODD-BARE";
/// 80 registers of 64 bits.
inline const std::string kWords = "ODD-WORDS";
/// 4 fractional PLLs, 2 clock blocks of 8 channels and 1,000 fields in 128 registers.
inline const std::string kLarge = "ODD-LARGE";

/// Writes all of them into the program's folder.
void WriteDevices(const std::filesystem::path& folder);

} // namespace zentrel::odd
