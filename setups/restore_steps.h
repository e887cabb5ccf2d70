#pragma once

#include <string_view>

#include "partfile/ini_file.h"

/// Steps that setups and modes share.
namespace zentrel {

class cPart;
class cPLL;

/// Sets a PLL's crystal and the reference of the clock block that it drives.
void RestoreCrystal(cPLL& pll, double mhz);

/// Sets a PLL's extra divider and keeps it in the part file at `partFile`.
void RestoreExtraDivider(cPLL& pll, IniFiles& files, std::string_view partFile,
                         std::int16_t divider);

/// Runs the on-load hooks of the first `count` fields, `count` from the part file's [BITS].
void RunOnLoadHooks(cPart& part, IniFiles& files, std::string_view partFile);

/// Rebuilds each linked PLL's VCO from the restored counters, and its clock block from that.
void RebuildLinkedFrequencies(cPart& part);

/// A register's word as files have it: every digit of the whole number, so that it reads back as
/// it was, up to 53 bits.
std::string WordText(double value);

} // namespace zentrel
