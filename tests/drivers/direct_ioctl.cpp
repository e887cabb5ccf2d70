#include "tests/drivers/direct_ioctl.h"

#include <dlfcn.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <string_view>

namespace zentrel {
namespace {

std::atomic<DirectIoctl*> active = nullptr;

} // namespace

DirectIoctl::DirectIoctl(std::string files, PlayedDevice& device)
    : files_(std::move(files)), device_(device) {
    active = this;
}

DirectIoctl::~DirectIoctl() {
    active = nullptr;
}

bool DirectIoctl::IsOurs(int fd) const {
    std::array<char, 256> target;
    const ssize_t length =
        ::readlink(("/proc/self/fd/" + std::to_string(fd)).c_str(), target.data(), target.size());
    return length > 0 &&
           std::string_view(target.data(), static_cast<std::size_t>(length)).starts_with(files_);
}

// A path is dear to ask for, an inode cheap.
PlayedDevice* DirectIoctl::DeviceOf(int fd) {
    struct stat file {};
    if (::fstat(fd, &file) != 0) return nullptr;
    if (file.st_ino == lastFile_) return &device_;
    if (!IsOurs(fd)) return nullptr;
    lastFile_ = file.st_ino;
    return &device_;
}

} // namespace zentrel

// Stands before the C library's in this program, and for the libraries that it loads.
extern "C" int ioctl(int fd, unsigned long request, ...) noexcept {
    using Ioctl = int (*)(int, unsigned long, ...);
    static const auto next = reinterpret_cast<Ioctl>(dlsym(RTLD_NEXT, "ioctl"));
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);

    zentrel::DirectIoctl* direct = zentrel::active;
    zentrel::PlayedDevice* device = direct == nullptr ? nullptr : direct->DeviceOf(fd);
    if (device == nullptr) return next(fd, request, argument);
    const int result = device->Ioctl(request, argument);
    if (result >= 0) return result;
    errno = -result;
    return -1;
}
