#pragma once

#include <string>

#include "tests/drivers/played_device.h"

namespace zentrel {

/// While it lives, ioctls on USB device files below `root` go straight to the played device instead
/// of through umockdev's socket and thread: a hundred times as many faults fit into a second.
class DirectIoctl {
  public:
    DirectIoctl(std::string root, PlayedDevice& device);
    ~DirectIoctl();
    DirectIoctl(const DirectIoctl&) = delete;
    DirectIoctl& operator=(const DirectIoctl&) = delete;

    PlayedDevice* DeviceOf(int fd) const;

  private:
    std::string root_;
    PlayedDevice& device_;
};

} // namespace zentrel
