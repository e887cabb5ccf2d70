#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace zentrel {

/// The largest ini file that is read or written. A part file of 20,000 keys has about 600 kB.
constexpr std::size_t kMaxFileSize = std::size_t{16} << 20;

/// Tells whether a file has changed: two equal stamps mean the same content, as long as the older
/// one says that it is settled.
struct FileStamp {
    bool exists = false;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::int64_t modifiedNs = 0;
    std::int64_t changedNs = 0;

    bool operator==(const FileStamp&) const = default;
};

/// A file as it was found.
struct StoredFile {
    std::string bytes;
    FileStamp stamp;
    /// The file's clock ticks coarsely: a change right after a change may leave the same stamp.
    /// False until the last change lies far enough back.
    bool settled = false;
    /// Why a file that is there wasn't read; empty when it was, or when there is none.
    std::string refusal;
};

/// Where whole files are kept. Paths are the store's own.
class FileStore {
  public:
    FileStore() = default;
    FileStore(const FileStore&) = delete;
    FileStore& operator=(const FileStore&) = delete;
    virtual ~FileStore() = default;

    /// The file's stamp now; `exists` is false for a missing one.
    virtual FileStamp Check(const std::string& path) = 0;

    /// The whole file. Never waits, whatever stands under that name.
    virtual StoredFile Read(const std::string& path) = 0;

    /// Puts `bytes` in the place of the file, whole or not at all, or creates it. Gives the
    /// reason of a failure, empty on success.
    virtual std::string Replace(const std::string& path, const std::string& bytes) = 0;
};

/// Files of the platform. A replacement keeps mode and owner, follows symbolic links, and is on
/// the disk when it returns.
std::unique_ptr<FileStore> MakeDiskStore();

} // namespace zentrel
