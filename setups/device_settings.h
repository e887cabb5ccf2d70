#pragma once

#include "partfile/ini_file.h"

namespace zentrel {

class cPart;

/// Writes the device's present settings back into its part file, in one replacement, so that it
/// comes up the same next time. A part file that has gone isn't made anew from settings alone.
/// False when the file couldn't be written; `files.TakeWriteFailures()` then tells why.
bool SaveDeviceSettings(cPart& part, IniFiles& files);

} // namespace zentrel
