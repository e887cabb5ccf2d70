#pragma once

#include <string_view>
#include <vector>

#include "partfile/ini_file.h"
#include "partfile/problems.h"

namespace zentrel {

/// The one format that is rewritten; a file that tells none has it too.
constexpr std::string_view kOldFormat = "2.2.0";
constexpr std::string_view kCurrentFormat = "2.3.0";

/// Whether the part file is in the old format.
bool NeedsMigration(IniFiles& files, std::string_view path);

/// Rewrites a part file of the old format in place, in one write scope: port masks and bit numbers
/// of the parallel port become connector pins and pin masks. Any other file is left alone, and so
/// is an empty path. Gives the values that couldn't be converted, without bad counts,
/// which the reading tells; a failed write is in files.TakeWriteFailures().
std::vector<Problem> MigratePartFile(IniFiles& files, std::string_view path);

} // namespace zentrel
