#pragma once

#include <memory>
#include <string>
#include <unordered_map>

#include "transport/device_watch.h"

struct udev;
struct udev_device;
struct udev_monitor;

namespace zentrel {

/// The system's notice of USB devices that come and go, after udev has set their rights. It runs no
/// thread: the event loop waits for `fd` to become readable and then calls `Dispatch`.
class UdevWatch final : public DeviceWatch {
  public:
    UdevWatch();
    ~UdevWatch() override;
    UdevWatch(const UdevWatch&) = delete;
    UdevWatch& operator=(const UdevWatch&) = delete;

    /// Events from before don't reach the sink.
    int Register(DeviceEvents& sink) override;
    void Unregister() override { sink_ = nullptr; }

    /// The same for as long as the watch lives; -1 when there is no udev, which `Register` tells.
    int fd() const { return fd_; }
    /// Hands on what has happened; returns at once. Harmless when nothing has.
    void Dispatch();

  private:
    struct Unref {
        void operator()(udev* object) const;
        void operator()(udev_device* object) const;
        void operator()(udev_monitor* object) const;
    };
    using Device = std::unique_ptr<udev_device, Unref>;

    void Start();
    void RememberPresent();
    void Handle(udev_device& device);

    std::unique_ptr<udev, Unref> udev_;
    std::unique_ptr<udev_monitor, Unref> monitor_;
    int fd_ = -1;
    int error_ = 0;
    DeviceEvents* sink_ = nullptr;
    /// Device names by their path in the kernel's tree: when a device is gone, so is what its name
    /// was made of.
    std::unordered_map<std::string, std::string> present_;
};

} // namespace zentrel
