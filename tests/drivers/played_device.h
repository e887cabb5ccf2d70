#pragma once

#include <cstring>
#include <mutex>

namespace zentrel {

/// A device file whose driver is played. The caller lives in this process, so an ioctl's argument
/// is its address as the caller sees it.
class PlayedDevice {
  public:
    virtual ~PlayedDevice() = default;
    /// As the kernel's entry: 0 or more, or the negative error number.
    virtual int Ioctl(unsigned long request, void* argument) = 0;
};

} // namespace zentrel
