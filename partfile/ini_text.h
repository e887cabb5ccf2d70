#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zentrel {

/// The text of an ini file: look-ups by section and key, changes that leave every other line as
/// it stands, byte for byte. Any bytes are taken, NULs and broken lines included.
///
/// Lines end in CR, LF or both. Lines that begin with ";" are comments, a line without "=" is no
/// key, and what stands ahead of the first section is never found. Of sections and of keys of one
/// name the first counts. Names compare without regard to the case of A to Z; of a name asked for,
/// the spaces around it don't count.
class IniText {
  public:
    /// Names a section of this text; good until it is assigned to.
    using SectionId = std::uint32_t;

    IniText() = default;
    /// At most 4 GB.
    explicit IniText(std::string bytes);

    std::optional<SectionId> FindSection(std::string_view name) const;

    /// The value, without blanks around it and without one pair of double quotes. Good until the
    /// next Set.
    std::optional<std::string_view> Find(SectionId section, std::string_view key) const;
    std::optional<std::string_view> Find(std::string_view section, std::string_view key) const;

    /// Replaces the value where the key stands, else adds the key behind the section's last key,
    /// else the section at the end. The value is written as it is given. A new line ends as the
    /// text's first line does, in CRLF when there is none.
    void Set(std::string_view section, std::string_view key, std::string_view value);

    /// The text with all changes in it.
    std::string Text() const;

    bool empty() const { return size_ == 0 && sections_.empty(); }

  private:
    struct Span {
        std::uint32_t at = 0;
        std::uint32_t length = 0;
    };
    struct Key {
        SectionId section = 0;
        Span name;
        Span value; // as it reads
    };
    struct Section {
        Span name;
        std::uint32_t insertAt = 0; // behind the last key's line, or the heading's
        std::vector<std::uint32_t> added;
    };
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t key = 0; // 1 and up; 0 is free
    };

    void Parse();
    void ParseLine(std::uint32_t begin, std::uint32_t end, std::uint32_t next,
                   std::optional<SectionId>& current);
    std::optional<SectionId> OpenSection(std::uint32_t begin, std::uint32_t end,
                                         std::uint32_t next);
    void BuildIndex();
    bool AddToIndex(std::uint32_t key);
    std::uint32_t FindKey(SectionId section, std::string_view name) const;
    void ReplaceValue(std::uint32_t key, std::string_view value);
    void AddKey(SectionId section, std::string_view name, std::string_view value);
    SectionId AddSection(std::string_view name);
    Span Keep(std::string_view text);
    Span ReadableValue(Span raw) const;
    std::string_view View(Span span) const {
        return std::string_view(bytes_).substr(span.at, span.length);
    }

    std::string bytes_;      // the text as it was given, then whatever was added
    std::uint32_t size_ = 0; // of the text as it was given
    std::string_view lineEnd_ = "\r\n";
    std::vector<Section> sections_;
    std::vector<Key> keys_;
    std::vector<Slot> slots_;
    std::map<std::uint32_t, Span> replaced_; // key to what now stands behind its "="
    std::map<std::uint32_t, Span> addedValues_;
    SectionId firstAddedSection_ = 0;
};

} // namespace zentrel
