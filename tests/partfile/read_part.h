#pragma once

#include <string>
#include <vector>

#include "partfile/part_definition.h"

namespace zentrel {

/// A part file's text as data.
inline PartDefinition ReadPart(const std::string& text) {
    return ReadPartDefinition(IniText(text), "p.ini");
}

/// The problems of a reading, a line each.
inline std::vector<std::string> Told(const PartDefinition& part) {
    std::vector<std::string> lines;
    for (const Problem& problem : part.problems) {
        lines.push_back(problem.section + ' ' + problem.key + '=' + problem.value + " > " +
                        problem.used);
    }
    return lines;
}

} // namespace zentrel
