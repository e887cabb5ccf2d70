#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "partfile/file_store.h"

namespace zentrel {
namespace {

constexpr int kMaxLinks = 40;
constexpr std::int64_t kNsPerSecond = 1'000'000'000;
// Above the tick of any file system's clock; FAT's has two seconds.
constexpr std::int64_t kSettledNs = 3 * kNsPerSecond;

std::string Reason(int error) {
    return std::generic_category().message(error);
}

class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { Close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    bool IsOpen() const { return number_ >= 0; }
    int Number() const { return number_; }
    bool Close() {
        const int number = std::exchange(number_, -1);
        return number < 0 || close(number) == 0;
    }

  private:
    int number_;
};

FileStamp StampOf(const struct stat& found) {
    const auto ns = [](const timespec& time) {
        return static_cast<std::int64_t>(time.tv_sec) * kNsPerSecond + time.tv_nsec;
    };
    return {true,
            static_cast<std::uint64_t>(found.st_dev),
            static_cast<std::uint64_t>(found.st_ino),
            static_cast<std::uint64_t>(found.st_size),
            ns(found.st_mtim),
            ns(found.st_ctim)};
}

bool IsSettled(const FileStamp& stamp) {
    const auto now = std::chrono::duration_cast<std::chrono::nanoseconds>(
                         std::chrono::system_clock::now().time_since_epoch())
                         .count();
    return stamp.changedNs + kSettledNs < now;
}

// Why a thing of that mode is no file to read, or empty.
std::string NotAFile(mode_t mode) {
    if (S_ISREG(mode)) return {};
    return S_ISDIR(mode) ? Reason(EISDIR) : "Not a regular file";
}

std::string FolderOf(const std::string& path) {
    const auto slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

// The path at the end of the symbolic links that begin at `path`; it needn't exist.
std::string FollowLinks(std::string path) {
    for (int hops = 0; hops < kMaxLinks; ++hops) {
        std::array<char, PATH_MAX> target{};
        const ssize_t length = readlink(path.c_str(), target.data(), target.size());
        if (length <= 0) break;
        const std::string_view to(target.data(), static_cast<std::size_t>(length));
        path = to.front() == '/' ? std::string(to) : FolderOf(path) + '/' + std::string(to);
    }
    return path;
}

// A file or folder that nobody may write to is left alone by the superuser too.
bool IsWritable(const std::string& path, mode_t mode) {
    constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    if ((mode & kAnyWrite) == 0) {
        errno = EACCES;
        return false;
    }
    return faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
}

bool WriteAll(int file, const std::string& bytes) {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t written = write(file, bytes.data() + done, bytes.size() - done);
        if (written < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        done += static_cast<std::size_t>(written);
    }
    return true;
}

// Gives the new file the old one's owner and mode. A program that may not give files away keeps
// the group at least, so that a shared folder goes on working.
bool TakeOver(int file, const struct stat& old) {
    if (fchown(file, old.st_uid, old.st_gid) != 0 && errno == EPERM) {
        static_cast<void>(fchown(file, static_cast<uid_t>(-1), old.st_gid) == 0);
    }
    return fchmod(file, old.st_mode & 07777U) == 0;
}

class DiskStore final : public FileStore {
  public:
    FileStamp Check(const std::string& path) override {
        struct stat found {};
        return stat(path.c_str(), &found) == 0 ? StampOf(found) : FileStamp{};
    }

    StoredFile Read(const std::string& path) override {
        StoredFile result;
        // Opening a pipe that nobody writes to would wait.
        const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        if (!file.IsOpen()) {
            const int error = errno;
            result.stamp = Check(path);
            if (error != ENOENT && error != ENOTDIR) result.refusal = Reason(error);
            return result;
        }
        struct stat found {};
        if (fstat(file.Number(), &found) != 0) {
            result.refusal = Reason(errno);
            return result;
        }
        result.stamp = StampOf(found);
        result.settled = IsSettled(result.stamp);
        result.refusal = NotAFile(found.st_mode);
        if (result.refusal.empty()) ReadAll(file.Number(), result);
        return result;
    }

    std::string Replace(const std::string& path, const std::string& bytes) override {
        const std::string target = FollowLinks(path);
        struct stat old {};
        const bool existed = stat(target.c_str(), &old) == 0;
        if (existed) {
            if (std::string refusal = NotAFile(old.st_mode); !refusal.empty()) return refusal;
            if (!IsWritable(target, old.st_mode)) return Reason(errno);
        }
        const std::string folder = FolderOf(target);
        struct stat place {};
        if (stat(folder.c_str(), &place) != 0) return Reason(errno);
        if (!IsWritable(folder, place.st_mode)) return Reason(errno);
        return WriteAndRename(target, folder, existed ? &old : nullptr, bytes);
    }

  private:
    static void ReadAll(int file, StoredFile& result) {
        if (result.stamp.size <= kMaxFileSize) {
            result.bytes.resize(static_cast<std::size_t>(result.stamp.size) + 1);
            std::size_t done = 0;
            while (done <= kMaxFileSize) {
                if (done == result.bytes.size()) result.bytes.resize(done * 2);
                const ssize_t got =
                    read(file, result.bytes.data() + done, result.bytes.size() - done);
                if (got < 0 && errno == EINTR) continue;
                if (got < 0) {
                    result.refusal = Reason(errno);
                    result.bytes.clear();
                    return;
                }
                if (got == 0) {
                    result.bytes.resize(done);
                    return;
                }
                done += static_cast<std::size_t>(got);
            }
        }
        result.bytes = {};
        result.refusal =
            "Larger than " + std::to_string(kMaxFileSize >> 20U) + " MB, too large for this file";
    }

    std::string WriteAndRename(const std::string& target, const std::string& folder,
                               const struct stat* old, const std::string& bytes) {
        const mode_t mode = old != nullptr ? 0600 : 0666; // the old one's comes with TakeOver
        std::string temporary;
        int number = -1;
        do {
            temporary = folder + "/.zentrel-" + std::to_string(getpid()) + '-' +
                        std::to_string(++count_) + ".tmp";
            number = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        } while (number < 0 && errno == EEXIST);
        Descriptor file(number);
        if (!file.IsOpen()) return Reason(errno);

        const bool written = WriteAll(file.Number(), bytes) &&
                             (old == nullptr || TakeOver(file.Number(), *old)) &&
                             fsync(file.Number()) == 0 && file.Close() &&
                             rename(temporary.c_str(), target.c_str()) == 0;
        if (!written) {
            std::string reason = Reason(errno);
            unlink(temporary.c_str());
            return reason;
        }
        // The new name has to outlast a pulled plug too. The file itself is safe by now.
        const Descriptor place(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (place.IsOpen()) fsync(place.Number());
        return {};
    }

    unsigned count_ = 0;
};

} // namespace

std::unique_ptr<FileStore> MakeDiskStore() {
    return std::make_unique<DiskStore>();
}

} // namespace zentrel
