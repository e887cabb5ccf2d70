#pragma once

#include <map>
#include <string>
#include <utility>

#include "partfile/file_store.h"

namespace zentrel {

/// Files in memory, for tests and experiments: the same rules without a disk. `failure`, when set,
/// is the reason why every replacement fails.
class MemoryStore final : public FileStore {
  public:
    struct Files {
        std::map<std::string, std::string> bytes;
        std::string failure;
        int reads = 0;
        int replacements = 0;
    };

    /// `files` outlives the store.
    explicit MemoryStore(Files& files) : files_(files) {}

    FileStamp Check(const std::string& path) override {
        FileStamp stamp;
        stamp.exists = files_.bytes.contains(path);
        return stamp;
    }

    StoredFile Read(const std::string& path) override {
        ++files_.reads;
        StoredFile file;
        file.stamp = Check(path);
        if (file.stamp.exists) file.bytes = files_.bytes[path];
        return file;
    }

    std::string Replace(const std::string& path, const std::string& bytes) override {
        if (!files_.failure.empty()) return files_.failure;
        ++files_.replacements;
        files_.bytes[path] = bytes;
        return {};
    }

  private:
    Files& files_;
};

} // namespace zentrel
