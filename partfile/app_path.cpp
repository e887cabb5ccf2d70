#include "partfile/app_path.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "device/text.h"

namespace zentrel {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPartNameLength = 30;

constexpr bool IsSeparator(char c) {
    return c == '/' || c == '\\';
}

// Whether `path` begins with `prefix` as a whole name; case and kind of separator don't count.
bool BeginsWith(std::string_view path, std::string_view prefix) {
    if (path.size() < prefix.size()) return false;
    for (std::size_t i = 0; i < prefix.size(); ++i) {
        if (IsSeparator(prefix[i]) ? !IsSeparator(path[i])
                                   : AsciiLower(path[i]) != AsciiLower(prefix[i])) {
            return false;
        }
    }
    return path.size() == prefix.size() || IsSeparator(path[prefix.size()]);
}

bool Exists(const std::string& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() != fs::file_type::not_found && !error;
}

// The name in `folder` that is `name` but for the case of its letters; of several the one that
// sorts first, so that it is the same one on every machine. `name` itself when there is none.
std::string NameOnDisk(const std::string& folder, const std::string& name) {
    std::string best;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        std::string found = it->path().filename().string();
        if (EqualNoCase(found, name) && (best.empty() || found < best)) best = std::move(found);
    }
    return best.empty() ? name : best;
}

} // namespace

AppPath::AppPath(std::string_view programFolder) : realFolder_(programFolder) {
    while (!realFolder_.empty() && IsSeparator(realFolder_.back()))
        realFolder_.pop_back();
    text_ = ToLower(realFolder_) + '\\';
}

std::optional<std::string> AppPath::Resolve(std::string_view path) const {
    if (path.empty() || path.find('\0') != std::string_view::npos) return {};
    const auto prefix = std::string_view(text_).substr(0, text_.size() - 1);
    if (!BeginsWith(path, prefix)) return std::string(path);

    std::string real = realFolder_;
    std::string_view rest = path.substr(prefix.size());
    while (!rest.empty()) {
        const auto end = std::find_if(rest.begin(), rest.end(), IsSeparator);
        const std::string name(rest.begin(), end);
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        if (name.empty()) continue;
        real += '/';
        const std::size_t folderLength = real.size();
        real += name;
        if (!Exists(real)) {
            real.resize(folderLength);
            real += NameOnDisk(real, name);
        }
    }
    return real;
}

std::string AppPath::PartFilePath(std::string_view partName) const {
    std::string_view name = partName.substr(0, kPartNameLength);
    if (name.size() == kPartNameLength && name.back() == '/') name.remove_suffix(1);
    const bool bare = std::none_of(name.begin(), name.end(), IsSeparator) &&
                      name.find("..") == std::string_view::npos &&
                      name.find('\0') == std::string_view::npos;
    return bare ? text_ + std::string(name) + ".ini" : std::string();
}

std::string AppPath::CataloguePath() const {
    return text_ + "zentrel.ini";
}

} // namespace zentrel
