#include "partfile/ini_file.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "partfile/utf16.h"

namespace zentrel {
namespace {

// Files kept parsed between calls: the part file, the catalogue, a setup file and one to spare.
constexpr std::size_t kKeptFiles = 4;

IniText Decoded(const std::string& bytes) {
    auto text = FromUtf16(bytes);
    return IniText(text ? *std::move(text) : bytes);
}

// The text as it is stored in a file that has had `before` in it.
std::string Encoded(const IniText& text, const std::string& before) {
    return FromUtf16(before) ? ToUtf16(text.Text()) : text.Text();
}

} // namespace

struct IniFiles::Entry {
    struct Edit {
        std::string section;
        std::string key;
        std::string value;
    };

    std::string realPath;
    IniText text;
    FileStamp stamp;
    std::string refusal;
    bool current = false;    // in a scope: needs no further look at the disk
    bool valid = false;      // text and stamp are of the file, and the stamp can be trusted
    bool anew = false;       // nothing of what stands on disk is kept
    std::vector<Edit> edits; // in `text`, not on disk
};

IniFiles::IniFiles(AppPath folder) : IniFiles(std::move(folder), MakeDiskStore()) {}

IniFiles::IniFiles(AppPath folder, std::unique_ptr<FileStore> store)
    : folder_(std::move(folder)), store_(std::move(store)), impossible_(new Entry) {}

IniFiles::~IniFiles() = default;

std::string IniFiles::GetPrivateSetting(std::string_view file, std::string_view section,
                                        std::string_view key, std::string_view defaultValue) {
    if (const auto value = View(file).Find(section, key)) return std::string(*value);
    while (!defaultValue.empty() && defaultValue.back() == ' ')
        defaultValue.remove_suffix(1);
    return std::string(defaultValue);
}

bool IniFiles::SetPrivateSetting(std::string_view file, std::string_view section,
                                 std::string_view key, std::string_view value) {
    WriteScope scope(*this);
    Entry& entry = Open(file);
    const bool impossible = &entry == impossible_.get();
    if (impossible || !entry.refusal.empty()) {
        refused_ = true;
        if (!impossible) Fail(entry, entry.refusal);
        return false;
    }
    entry.valid = false;
    entry.text.Set(section, key, value);
    entry.edits.push_back({std::string(section), std::string(key), std::string(value)});
    return scope.Commit();
}

void IniFiles::StartAnew(std::string_view file) {
    Entry& entry = Open(file);
    if (&entry == impossible_.get()) return;
    entry.valid = false;
    entry.anew = true;
    entry.text = IniText();
    entry.edits.clear();
}

const IniText& IniFiles::View(std::string_view file) {
    return Open(file).text;
}

std::optional<std::string> IniFiles::ReadFailure(std::string_view file) {
    const Entry& entry = Open(file);
    if (entry.refusal.empty()) return {};
    return entry.refusal;
}

std::vector<WriteFailure> IniFiles::TakeWriteFailures() {
    return std::exchange(failures_, {});
}

std::string IniFiles::RealPath(std::string_view file) const {
    return folder_.Resolve(file).value_or(std::string(file));
}

IniFiles::Entry& IniFiles::EntryOf(std::string_view file) {
    const auto realPath = folder_.Resolve(file);
    if (!realPath) return *impossible_;
    auto found = byRealPath_.find(*realPath);
    if (found == byRealPath_.end()) {
        if (scopes_ == 0 && byRealPath_.size() >= kKeptFiles) byRealPath_.clear();
        auto entry = std::make_unique<Entry>();
        entry->realPath = *realPath;
        found = byRealPath_.emplace(*realPath, std::move(entry)).first;
    }
    return *found->second;
}

// The entry with its text as the disk has it, or, in a scope, as it was at the scope's first use.
IniFiles::Entry& IniFiles::Open(std::string_view file) {
    if (scopes_ > 0) {
        if (const auto found = byName_.find(file); found != byName_.end()) return *found->second;
    }
    Entry& entry = EntryOf(file);
    if (&entry == impossible_.get()) return entry;
    if (!entry.current) {
        if (!entry.valid || store_->Check(entry.realPath) != entry.stamp) Load(entry);
        entry.current = scopes_ > 0;
    }
    if (scopes_ > 0) byName_.emplace(file, &entry);
    return entry;
}

void IniFiles::Load(Entry& entry) {
    entry.valid = false;
    StoredFile file = store_->Read(entry.realPath);
    entry.stamp = file.stamp;
    entry.refusal = std::move(file.refusal);
    entry.text = Decoded(file.bytes);
    entry.valid = file.settled;
}

bool IniFiles::Fail(Entry& entry, const std::string& reason) {
    const bool told = std::any_of(failures_.begin(), failures_.end(), [&](const auto& failure) {
        return failure.file == entry.realPath;
    });
    if (!told) failures_.push_back({entry.realPath, reason});
    return false;
}

// Puts the entry's edits on disk, into what stands there now: someone else may have written the
// file since it was read.
bool IniFiles::Replace(Entry& entry) {
    const auto edits = std::exchange(entry.edits, {});
    const bool anew = std::exchange(entry.anew, false);
    StoredFile now = store_->Read(entry.realPath);
    if (!now.refusal.empty()) return Fail(entry, now.refusal);
    IniText text = anew ? IniText() : Decoded(now.bytes);
    for (const auto& edit : edits)
        text.Set(edit.section, edit.key, edit.value);
    const std::string bytes = Encoded(text, anew ? std::string() : now.bytes);
    if (bytes.size() > kMaxFileSize) return Fail(entry, "The file would grow too large");
    if (!now.stamp.exists || bytes != now.bytes) {
        const auto reason = store_->Replace(entry.realPath, bytes);
        if (!reason.empty()) return Fail(entry, reason);
    }
    entry.text = std::move(text);
    return true;
}

bool IniFiles::ReplaceAll() {
    bool done = !std::exchange(refused_, false);
    for (auto& [path, entry] : byRealPath_) {
        if (!entry->edits.empty()) done = Replace(*entry) && done;
    }
    return done;
}

void IniFiles::BeginScope() {
    ++scopes_;
}

void IniFiles::EndScope() {
    if (--scopes_ > 0) return;
    byName_.clear();
    for (auto& [path, entry] : byRealPath_)
        entry->current = false;
}

ReadScope::ReadScope(IniFiles& files) : files_(files) {
    files_.BeginScope();
}

ReadScope::~ReadScope() {
    files_.EndScope();
}

WriteScope::WriteScope(IniFiles& files) : files_(files) {
    files_.BeginScope();
    ++files_.writeScopes_;
}

WriteScope::~WriteScope() {
    try {
        Commit();
    } catch (const std::exception& error) {
        files_.failures_.push_back({"", error.what()});
    }
}

bool WriteScope::Commit() {
    if (!open_) return done_;
    open_ = false;
    const ReadScope ending(files_); // what is being replaced stays open until it is
    files_.EndScope();
    if (--files_.writeScopes_ == 0) done_ = files_.ReplaceAll();
    return done_;
}

} // namespace zentrel
