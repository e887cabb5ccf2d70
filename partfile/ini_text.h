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

  private:
    struct Span {
        std::uint32_t at = 0;
        std::uint32_t length = 0;
    };
    // A key of a section, or a section's heading (then `owner` is kHeadings).
    struct Name {
        std::uint32_t owner = 0;
        Span text;
        Span value; // as it reads; of a heading, `at` is the SectionId
    };
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t name = 0; // 1 and up; 0 is free
    };
    struct Line {
        std::uint32_t begin = 0; // behind the blanks in front
        std::uint32_t end = 0;   // ahead of the line end
        std::uint32_t next = 0;
    };
    struct NewKeys {
        Span heading; // of a new section
        std::vector<std::uint32_t> names;
    };
    struct Splice;

    void Parse();
    void ParseHeading(const Line& line);
    void ParseKey(const Line& line);
    bool AddName(const Name& name);
    void Grow();
    const Name* FindName(std::uint32_t owner, std::string_view text) const;
    void ReplaceValue(std::uint32_t name, std::string_view value);
    void AddKey(SectionId section, std::string_view key, std::string_view value);
    SectionId AddSection(std::string_view name);
    Span Keep(std::string_view text);
    Span Readable(Span value) const;
    Splice ReplacementOf(std::uint32_t name, Span value) const;
    void AppendKeys(const NewKeys& keys, std::string& text) const;
    std::string_view View(Span span) const {
        return std::string_view(bytes_).substr(span.at, span.length);
    }

    std::string bytes_;      // the text as it was given, then whatever was added
    std::uint32_t size_ = 0; // of the text as it was given
    std::string_view lineEnd_ = "\r\n";
    std::vector<Name> names_;
    std::vector<Slot> slots_; // open addressing into names_
    std::size_t used_ = 0;    // slots
    // Behind each section's last key's line, or its heading's: where a new key goes.
    std::vector<std::uint32_t> insertAt_;
    std::optional<SectionId> parsing_; // the section that takes the next line's key

    // Changes since the text was given. Names and sections from these numbers on are new.
    std::uint32_t firstNewName_ = 0;
    SectionId firstNewSection_ = 0;
    std::map<std::uint32_t, Span> written_; // name to what stands behind "="
    std::map<SectionId, NewKeys> added_;
};

} // namespace zentrel
