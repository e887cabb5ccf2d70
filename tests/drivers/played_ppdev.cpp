#include "tests/drivers/played_ppdev.h"

// What <linux/ppdev.h> builds its numbers with.
#include <sys/ioctl.h>

#include <linux/ppdev.h>

#include <cerrno>

namespace zentrel {

// What is wrong with this call: 0, or the negative error number.
int PlayedPpdev::Fault(unsigned long request) {
    if (left_ >= 0 && left_-- == 0) gone_ = true;
    if (gone_) return -ENODEV;
    if (injector_ == nullptr || !injector_->Strikes()) return 0;
    switch (injector_->Pick(3)) {
    case 0:
        return -EIO;
    case 1:
        return request == PPCLAIM ? -ENXIO : -EINTR;
    default:
        gone_ = true;
        return -ENODEV;
    }
}

int PlayedPpdev::Ioctl(unsigned long request, void* argument) {
    if (const int fault = Fault(request); fault != 0) return fault;
    if (request == PPCLAIM) {
        if (exclusive_) return -ENXIO;
        claimed_ = true;
        ++claims_;
        return 0;
    }
    if (!claimed_) return -EPERM;
    auto* byte = static_cast<std::uint8_t*>(argument);
    switch (request) {
    case PPRELEASE:
        claimed_ = false;
        return 0;
    case PPWDATA:
        hardware_.WritePort(base_, *byte);
        return 0;
    case PPWCONTROL:
        hardware_.WritePort(static_cast<std::uint16_t>(base_ + 2), *byte);
        return 0;
    case PPRDATA:
        *byte = hardware_.ReadPort(base_);
        return 0;
    case PPRSTATUS:
        *byte = hardware_.ReadPort(static_cast<std::uint16_t>(base_ + 1));
        return 0;
    case PPRCONTROL:
        *byte = hardware_.ReadPort(static_cast<std::uint16_t>(base_ + 2)) & 0xF;
        return 0;
    default:
        return -ENOTTY;
    }
}

} // namespace zentrel
