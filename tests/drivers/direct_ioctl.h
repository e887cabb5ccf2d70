#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "tests/drivers/played_device.h"

namespace zentrel {

/// While it lives, ioctls on the device files whose paths begin with `files` go straight to the
/// played device instead of through umockdev's socket and thread: a hundred times as many faults
/// fit into a second.
class DirectIoctl {
  public:
    DirectIoctl(std::string files, PlayedDevice& device);
    ~DirectIoctl();
    DirectIoctl(const DirectIoctl&) = delete;
    DirectIoctl& operator=(const DirectIoctl&) = delete;

    PlayedDevice* DeviceOf(int fd);

  private:
    bool IsOurs(int fd) const;

    std::string files_;
    PlayedDevice& device_;
    std::atomic<std::uint64_t> lastFile_ = 0; // the inode that was found to be ours last
};

} // namespace zentrel
