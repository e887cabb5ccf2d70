#pragma once

#include <span>
#include <string>

#include "transport/monitor/wire_record.h"

/// Records for other programs.
namespace zentrel {

/// A Value Change Dump, as logic analysers read it: CLK, DATA, LE, the pins by name and READ, in
/// steps of 10 ns. Edges of one record share its measured time evenly, at 10 ns each at least;
/// pauses between records longer than 100 us are cut to that, so that a morning's words make one
/// picture. `records` are in the order of time.
std::string VcdOf(std::span<const WireRecord* const> records);

/// Comma-separated values with a heading line, CR LF behind each line, and quotes where they are
/// needed.
std::string CsvOf(std::span<const WireRecord* const> records);

} // namespace zentrel
