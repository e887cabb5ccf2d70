#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "partfile/app_path.h"
#include "partfile/file_store.h"
#include "partfile/ini_text.h"
#include "partfile/problems.h"

namespace zentrel {

/// The two ini operations, on which part files, catalogue, setup files and modes rest, and the
/// scopes that make many of them cheap. One object for the program; everybody gets a reference.
///
/// Outside a scope each call looks at the file on disk, and each write is on disk when the call
/// returns. Files are named by the platform's paths or by paths that begin with AppPath.
class IniFiles {
  public:
    /// Files on disk, with the program's folder behind AppPath.
    explicit IniFiles(AppPath folder);
    /// Files wherever `store` keeps them.
    IniFiles(AppPath folder, std::unique_ptr<FileStore> store);
    ~IniFiles();
    IniFiles(const IniFiles&) = delete;
    IniFiles& operator=(const IniFiles&) = delete;

    /// The value of a key, without blanks around it and without one pair of double quotes. The
    /// default, less the spaces at its end, when file, section or key is missing or the file
    /// can't be read. An empty value is a value. Names don't regard case.
    std::string GetPrivateSetting(std::string_view file, std::string_view section,
                                  std::string_view key, std::string_view defaultValue);

    /// Replaces the value where the key stands, else adds the key behind the section's last key,
    /// else the section at the end of the file, which is created when it is missing. The file is
    /// replaced whole: after a failure it stands as it was, the result is false and the reason is
    /// in WriteFailures. Inside a write scope true says that the change will be in the replacement.
    bool SetPrivateSetting(std::string_view file, std::string_view section, std::string_view key,
                           std::string_view value);

    /// Inside a write scope: the file is written anew, so that nothing of what it held stays. What
    /// stands on disk is replaced at the scope's end as by any other write.
    void StartAnew(std::string_view file);

    /// The file's text as the next GetPrivateSetting would see it; empty when there is none. Good
    /// until the next call of this object.
    const IniText& View(std::string_view file);

    /// Why a file that exists can't be read (a folder, no permission, larger than kMaxFileSize);
    /// nothing when it can, or is missing.
    std::optional<std::string> ReadFailure(std::string_view file);

    /// Hands out the replacements that failed since the last call, each file once.
    std::vector<WriteFailure> TakeWriteFailures();

    const AppPath& Folder() const { return folder_; }

    /// The file as the user finds it on the machine: what messages name.
    std::string RealPath(std::string_view file) const;

  private:
    friend class ReadScope;
    friend class WriteScope;

    struct Entry;

    Entry& Open(std::string_view file);
    Entry& EntryOf(std::string_view file);
    void Load(Entry& entry);
    bool Replace(Entry& entry);
    bool ReplaceAll();
    bool Fail(Entry& entry, const std::string& reason);
    void BeginScope();
    void EndScope();

    AppPath folder_;
    std::unique_ptr<FileStore> store_;
    std::map<std::string, std::unique_ptr<Entry>, std::less<>> byRealPath_;
    std::map<std::string, Entry*, std::less<>> byName_; // as looked up in the current scope
    std::unique_ptr<Entry> impossible_;                 // for every path that no file can have
    int scopes_ = 0;
    int writeScopes_ = 0;
    bool refused_ = false; // a write in the current scope never got as far as an edit
    std::vector<WriteFailure> failures_;
};

/// While it lives, each file is looked at and parsed once, at its first use. Scopes nest.
class ReadScope {
  public:
    explicit ReadScope(IniFiles& files);
    ~ReadScope();
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

  private:
    IniFiles& files_;
};

/// While it lives, writes are gathered, and reads see them; each written file is replaced once at
/// the end of the outermost write scope. A read scope around it goes on seeing what was written
/// even if the replacement failed, so that a load can use what it couldn't store.
class WriteScope {
  public:
    explicit WriteScope(IniFiles& files);
    /// Commits unless Commit has run.
    ~WriteScope();
    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;

    /// Ends the scope: false when a file couldn't be written or replaced (then see
    /// TakeWriteFailures). An inner scope leaves the work to the outermost and gives true.
    bool Commit();

  private:
    IniFiles& files_;
    bool open_ = true;
    bool done_ = true;
};

} // namespace zentrel
