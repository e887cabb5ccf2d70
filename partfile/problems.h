#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What went wrong while a part file was read, and how the user is told of it.
namespace zentrel {

/// One value that couldn't be used as it stands, or, with `key` empty, a file as a whole.
struct Problem {
    std::string file;    ///< where it lies on the machine
    std::string section; ///< without brackets; empty when the file itself is at fault
    std::string key;     ///< with its number: "LEN07"
    std::string value;   ///< what stands in the file; for a whole file, why it can't be read
    std::string used;    ///< what was taken instead

    bool operator==(const Problem&) const = default;
};

/// A replacement of a file that failed; the file is as it was.
struct WriteFailure {
    std::string file;   ///< where it lies on the machine
    std::string reason; ///< in the platform's words: "Permission denied"

    bool operator==(const WriteFailure&) const = default;
};

/// One message for all problems of a load: a line each, at most 20, then the count of the rest.
/// Empty when there are none.
std::string ProblemsMessage(const std::vector<Problem>& problems);

/// One message for all files of a save that couldn't be written. Empty when there are none.
std::string WriteFailuresMessage(const std::vector<WriteFailure>& failures);

} // namespace zentrel
