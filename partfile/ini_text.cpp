#include "partfile/ini_text.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "device/text.h"

namespace zentrel {
namespace {

constexpr std::uint32_t kHeadings = 0xFFFFFFFFU;
constexpr std::size_t kNowhere = std::string_view::npos;

constexpr auto kFolded = [] {
    std::array<unsigned char, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = static_cast<unsigned char>(AsciiLower(static_cast<char>(i)));
    }
    return table;
}();

constexpr bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\v';
}
constexpr bool IsLineEnd(char c) {
    return c == '\r' || c == '\n';
}

std::string_view TrimSpaces(std::string_view name) {
    while (!name.empty() && name.front() == ' ')
        name.remove_prefix(1);
    while (!name.empty() && name.back() == ' ')
        name.remove_suffix(1);
    return name;
}

std::uint32_t HashOf(std::uint32_t owner, std::string_view name) {
    std::uint64_t hash = 0x9E3779B97F4A7C15ULL * (owner + std::uint64_t{1});
    for (const char c : name) {
        hash = (hash ^ kFolded[static_cast<unsigned char>(c)]) * 0x100000001B3ULL;
    }
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}

bool SameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (kFolded[static_cast<unsigned char>(a[i])] !=
            kFolded[static_cast<unsigned char>(b[i])]) {
            return false;
        }
    }
    return true;
}

bool HasBlankEdge(std::string_view name) {
    return !name.empty() && (IsBlank(name.front()) || IsBlank(name.back()));
}

// Whether a key line or heading made of these reads back as it was meant.
bool IsPlain(std::string_view section, std::string_view key, std::string_view value) {
    return section.find_first_of("]\r\n") == kNowhere && !HasBlankEdge(section) &&
           key.find_first_of("=\r\n") == kNowhere && !HasBlankEdge(key) && !key.starts_with(';') &&
           !key.starts_with('[') && value.find_first_of("\r\n") == kNowhere;
}

} // namespace

// What Text puts in the place of a run of the given text.
struct IniText::Splice {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    Span value;                       // of a replacement
    const NewKeys* newKeys = nullptr; // else of an insertion
};

IniText::IniText(std::string bytes)
    : bytes_(std::move(bytes)), size_(static_cast<std::uint32_t>(bytes_.size())) {
    Parse();
    firstNewName_ = static_cast<std::uint32_t>(names_.size());
    firstNewSection_ = static_cast<SectionId>(insertAt_.size());
}

void IniText::Parse() {
    const char* const text = bytes_.data();
    std::uint32_t lineFeed = 0; // the next one at or behind the line; size_ when there is none
    bool sought = false;
    for (std::uint32_t begin = 0; begin < size_;) {
        if (!sought || lineFeed < begin) {
            const void* found = std::memchr(text + begin, '\n', size_ - begin);
            lineFeed = found == nullptr
                           ? size_
                           : static_cast<std::uint32_t>(static_cast<const char*>(found) - text);
            sought = true;
        }
        Line line{begin, lineFeed, std::min(lineFeed + 1, size_)};
        if (const void* found = std::memchr(text + begin, '\r', lineFeed - begin)) {
            line.end = static_cast<std::uint32_t>(static_cast<const char*>(found) - text);
            const bool both = line.end + 1 < size_ && text[line.end + 1] == '\n';
            line.next = line.end + (both ? 2 : 1);
        }
        if (begin == 0 && line.end < size_) {
            lineEnd_ = line.next - line.end == 2 ? "\r\n" : text[line.end] == '\r' ? "\r" : "\n";
        }
        begin = line.next;

        while (line.begin < line.end && IsBlank(text[line.begin]))
            ++line.begin;
        if (line.begin == line.end || text[line.begin] == ';') continue;
        if (text[line.begin] == '[') {
            ParseHeading(line);
        } else if (parsing_) {
            ParseKey(line);
        }
    }
}

void IniText::ParseHeading(const Line& line) {
    std::uint32_t from = line.begin + 1;
    const void* close = std::memchr(bytes_.data() + from, ']', line.end - from);
    std::uint32_t to =
        close == nullptr
            ? line.end
            : static_cast<std::uint32_t>(static_cast<const char*>(close) - bytes_.data());
    while (from < to && IsBlank(bytes_[from]))
        ++from;
    while (to > from && IsBlank(bytes_[to - 1]))
        --to;
    const auto id = static_cast<SectionId>(insertAt_.size());
    if (AddName({kHeadings, {from, to - from}, {id, 0}})) {
        insertAt_.push_back(line.next);
        parsing_ = id;
    } else {
        parsing_.reset();
    }
}

void IniText::ParseKey(const Line& line) {
    const void* found = std::memchr(bytes_.data() + line.begin, '=', line.end - line.begin);
    if (found == nullptr) return;
    const auto equals = static_cast<std::uint32_t>(static_cast<const char*>(found) - bytes_.data());
    std::uint32_t nameEnd = equals;
    while (nameEnd > line.begin && IsBlank(bytes_[nameEnd - 1]))
        --nameEnd;
    insertAt_[*parsing_] = line.next;
    AddName({*parsing_,
             {line.begin, nameEnd - line.begin},
             Readable({equals + 1, line.end - equals - 1})});
}

IniText::Span IniText::Readable(Span value) const {
    std::uint32_t from = value.at;
    std::uint32_t to = value.at + value.length;
    while (from < to && IsBlank(bytes_[from]))
        ++from;
    while (to > from && IsBlank(bytes_[to - 1]))
        --to;
    if (to - from >= 2 && bytes_[from] == '"' && bytes_[to - 1] == '"') {
        ++from;
        --to;
    }
    return {from, to - from};
}

void IniText::Grow() {
    std::vector<Slot> old(std::max<std::size_t>(64, slots_.size() * 2));
    old.swap(slots_);
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.name == 0) continue;
        std::size_t at = slot.hash & mask;
        while (slots_[at].name != 0)
            at = (at + 1) & mask;
        slots_[at] = slot;
    }
}

// False, and nothing added, when the owner has the name already.
bool IniText::AddName(const Name& name) {
    if (used_ * 2 >= slots_.size()) Grow();
    const std::string_view text = View(name.text);
    const std::uint32_t hash = HashOf(name.owner, text);
    const std::size_t mask = slots_.size() - 1;
    std::size_t at = hash & mask;
    for (; slots_[at].name != 0; at = (at + 1) & mask) {
        if (slots_[at].hash != hash) continue;
        const Name& other = names_[slots_[at].name - 1];
        if (other.owner == name.owner && SameName(View(other.text), text)) return false;
    }
    names_.push_back(name);
    slots_[at] = {hash, static_cast<std::uint32_t>(names_.size())};
    ++used_;
    return true;
}

const IniText::Name* IniText::FindName(std::uint32_t owner, std::string_view text) const {
    if (slots_.empty()) return nullptr;
    const std::uint32_t hash = HashOf(owner, text);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t at = hash & mask; slots_[at].name != 0; at = (at + 1) & mask) {
        if (slots_[at].hash != hash) continue;
        const Name& name = names_[slots_[at].name - 1];
        if (name.owner == owner && SameName(View(name.text), text)) return &name;
    }
    return nullptr;
}

std::optional<IniText::SectionId> IniText::FindSection(std::string_view name) const {
    const Name* heading = FindName(kHeadings, TrimSpaces(name));
    if (heading == nullptr) return {};
    return heading->value.at;
}

std::optional<std::string_view> IniText::Find(SectionId section, std::string_view key) const {
    const Name* found = FindName(section, TrimSpaces(key));
    if (found == nullptr) return {};
    return View(found->value);
}

std::optional<std::string_view> IniText::Find(std::string_view section,
                                              std::string_view key) const {
    const auto id = FindSection(section);
    return id ? Find(*id, key) : std::nullopt;
}

IniText::Span IniText::Keep(std::string_view text) {
    const Span span{static_cast<std::uint32_t>(bytes_.size()),
                    static_cast<std::uint32_t>(text.size())};
    bytes_.append(text);
    return span;
}

void IniText::Set(std::string_view section, std::string_view key, std::string_view value) {
    section = TrimSpaces(section);
    key = TrimSpaces(key);
    auto id = FindSection(section);
    const Name* name = id ? FindName(*id, key) : nullptr;
    if (name != nullptr) {
        ReplaceValue(static_cast<std::uint32_t>(name - names_.data()), value);
    } else {
        if (!id) id = AddSection(section);
        AddKey(*id, key, value);
    }
    // What reads back as something else than it was written as is read from the text itself.
    if (!IsPlain(section, key, value)) *this = IniText(Text());
}

void IniText::ReplaceValue(std::uint32_t name, std::string_view value) {
    const Span written = Keep(value);
    written_[name] = written;
    names_[name].value = Readable(written);
}

void IniText::AddKey(SectionId section, std::string_view key, std::string_view value) {
    const Span text = Keep(key);
    const Span written = Keep(value);
    const auto name = static_cast<std::uint32_t>(names_.size());
    AddName({section, text, Readable(written)});
    written_[name] = written;
    added_[section].names.push_back(name);
}

IniText::SectionId IniText::AddSection(std::string_view name) {
    const auto id = static_cast<SectionId>(insertAt_.size());
    const Span heading = Keep(name);
    AddName({kHeadings, heading, {id, 0}});
    insertAt_.push_back(size_);
    added_[id].heading = heading;
    return id;
}

IniText::Splice IniText::ReplacementOf(std::uint32_t name, Span value) const {
    const Span& text = names_[name].text;
    std::uint32_t begin = text.at + text.length;
    while (bytes_[begin] != '=')
        ++begin;
    ++begin;
    while (begin < size_ && IsBlank(bytes_[begin]))
        ++begin;
    std::uint32_t end = begin;
    while (end < size_ && !IsLineEnd(bytes_[end]))
        ++end;
    return {begin, end, value, nullptr};
}

void IniText::AppendKeys(const NewKeys& keys, std::string& text) const {
    for (const std::uint32_t name : keys.names) {
        text += View(names_[name].text);
        text += '=';
        text += View(written_.at(name));
        text += lineEnd_;
    }
}

std::string IniText::Text() const {
    std::vector<Splice> splices;
    for (const auto& [name, value] : written_) {
        if (name < firstNewName_) splices.push_back(ReplacementOf(name, value));
    }
    for (auto it = added_.begin(); it != added_.lower_bound(firstNewSection_); ++it) {
        splices.push_back({insertAt_[it->first], insertAt_[it->first], {}, &it->second});
    }
    std::stable_sort(splices.begin(), splices.end(),
                     [](const Splice& a, const Splice& b) { return a.begin < b.begin; });

    std::string text;
    text.reserve(bytes_.size() + 64);
    const auto startLine = [&] {
        if (!text.empty() && !IsLineEnd(text.back())) text += lineEnd_;
    };
    std::uint32_t done = 0;
    for (const Splice& splice : splices) {
        text.append(bytes_, done, splice.begin - done);
        done = splice.end;
        if (splice.newKeys != nullptr) {
            startLine();
            AppendKeys(*splice.newKeys, text);
        } else {
            text += View(splice.value);
            if (splice.end == size_) text += lineEnd_;
        }
    }
    text.append(bytes_, done, size_ - done);
    for (auto it = added_.lower_bound(firstNewSection_); it != added_.end(); ++it) {
        startLine();
        text.append("[").append(View(it->second.heading)).append("]").append(lineEnd_);
        AppendKeys(it->second, text);
    }
    return text;
}

} // namespace zentrel
