#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "device/text.h"
#include "partfile/part_definition.h"
#include "partfile/section_reader.h"

/// The section readers behind ReadPartDefinition.
namespace zentrel {

/// What a reading passes from section to section.
struct PartReading {
    const IniText& text;
    std::string_view file; // for problems
    PartDefinition& part;
    /// How many more list entries and script lines may be read; see kMaxListedEntries.
    int listedLeft = kMaxListedEntries;

    SectionReader Section(std::string_view name) const { return {text, file, name, part.problems}; }
    /// `count`, when that many entries may still be listed; else 0, with a problem under `word`.
    int TakeListed(SectionReader& section, std::string_view word, int count);
};

/// The names of a section, and which entry has each.
class EntryNames {
  public:
    EntryNames(std::string section, PartDefinition& part)
        : section_(std::move(section)), part_(part) {}

    /// Whether the name stands already; else this entry has it from now on.
    bool Repeats(const std::string& name, int entry);
    /// Records that the entry, whose name stands already, is left out.
    void LeaveOut(SectionReader& section, const std::string& name, int entry);

  private:
    std::string section_;
    PartDefinition& part_;
    std::unordered_map<std::string, int, NoCaseHash, NoCaseEqual> entries_;
};

void ReadFields(PartReading& reading);
void ReadPlls(PartReading& reading);
void ReadClkDists(PartReading& reading);

} // namespace zentrel
