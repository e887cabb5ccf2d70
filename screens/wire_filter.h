#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "transport/monitor/wire_record.h"

namespace zentrel {

/// The filter of the wire monitor: words with blanks between them, letters in any case, all of
/// which a record has to answer. A word is looked for in the names of the register, of its fields
/// and of the pins that moved, in what else happened ("version", "refused"), and is a route
/// ("usb") or the beginning of the hexadecimal word ("0x12"). What is the whole name of a register,
/// field or pin means that one alone: "R1" doesn't show R10.
class WireFilter {
  public:
    WireFilter() = default;
    explicit WireFilter(std::string_view text);

    bool empty() const { return terms_.empty(); }
    bool Takes(const WireRecord& record);

  private:
    /// What a word of the filter means for one device, found once.
    struct Meaning {
        std::shared_ptr<const WireMap> map;
        std::vector<bool> registers; // by position - 1
        std::uint16_t pins = 0;
        bool whole = false; // the word is somebody's whole name
    };
    struct Term {
        std::string text;
        std::vector<Meaning> meanings;
    };

    static bool Answers(Term& term, const WireRecord& record);
    static const Meaning& MeaningFor(Term& term, const WireRecord& record);

    std::vector<Term> terms_;
};

} // namespace zentrel
