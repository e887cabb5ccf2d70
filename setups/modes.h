#pragma once

#include <string_view>

#include "partfile/ini_file.h"

/// Named states of a device, kept in its part file.
namespace zentrel {

class cPart;

/// Stores the present state as a new mode, in one replacement of the part file, and returns its
/// number. The name may exist already. -1 when the file couldn't be written;
/// `files.TakeWriteFailures()` then tells why.
int StoreMode(cPart& part, IniFiles& files, std::string_view name);

/// Restores mode `Index`, counted from 0. Nothing is sent. Throws NotFound for a register that the
/// device doesn't have, TypeMismatch for a value that is no number; what was restored before
/// stands.
void RestoreMode(cPart& part, IniFiles& files, int Index);

/// As every way to a mode does it: twice, since the first pass brings the input selection up to
/// date that the second one works with.
void RestoreModeTwice(cPart& part, IniFiles& files, int Index);

} // namespace zentrel
