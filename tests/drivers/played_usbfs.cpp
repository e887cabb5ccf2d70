#include "tests/drivers/played_usbfs.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <thread>

namespace zentrel {
namespace {

constexpr UsbFault kOutFaults[] = {UsbFault::Refused,   UsbFault::Protocol,   UsbFault::Halted,
                                   UsbFault::Lost,      UsbFault::Pulled,     UsbFault::Half,
                                   UsbFault::Unnoticed, UsbFault::PulledHalf, UsbFault::PulledOut};
constexpr UsbFault kInFaults[] = {UsbFault::Refused, UsbFault::Protocol, UsbFault::Halted,
                                  UsbFault::Lost,    UsbFault::Pulled,   UsbFault::Late,
                                  UsbFault::Garbage, UsbFault::Split,    UsbFault::PulledIn};
constexpr int kMostGarbage = 12;
constexpr std::chrono::microseconds kBetweenPolls{100};

std::uint8_t* Bytes(const usbdevfs_urb& urb) {
    return static_cast<std::uint8_t*>(urb.buffer);
}

} // namespace

int PlayedUsbfs::Ioctl(unsigned long request, void* argument) {
    const std::lock_guard lock(mutex_);
    if (request == USBDEVFS_REAPURBNDELAY) return Reap(static_cast<void**>(argument));
    if (request == USBDEVFS_DISCARDURB) return Discard(argument);
    if (!plugged_) return -ENODEV;
    switch (request) {
    case USBDEVFS_GET_CAPABILITIES:
        *static_cast<std::uint32_t*>(argument) = USBDEVFS_CAP_ZERO_PACKET |
                                                 USBDEVFS_CAP_NO_PACKET_SIZE_LIM |
                                                 USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
        return 0;
    case USBDEVFS_CLAIMINTERFACE:
    case USBDEVFS_DISCONNECT_CLAIM:
        if (inUse_) return -EBUSY;
        claimed_ = true;
        return 0;
    case USBDEVFS_RELEASEINTERFACE:
        claimed_ = false;
        return 0;
    case USBDEVFS_RESET:
        return Reset();
    case USBDEVFS_SUBMITURB:
        return claimed_ ? Submit(*static_cast<usbdevfs_urb*>(argument)) : -EINVAL;
    case USBDEVFS_IOCTL: // to the interface's kernel driver; there is none
        return -ENODATA;
    default:
        return -ENOTTY;
    }
}

void PlayedUsbfs::Plug() {
    const std::lock_guard lock(mutex_);
    waiting_.clear();
    ended_.clear();
    replies_.clear();
    plugged_ = true;
    claimed_ = false;
    bridge_.SetPlugged(true);
    bridge_.InitUSBInterface();
}

void PlayedUsbfs::Pull() {
    const std::lock_guard lock(mutex_);
    PullNow();
}

void PlayedUsbfs::PullNow() {
    plugged_ = false;
    bridge_.SetPlugged(false);
    replies_.clear();
    for (usbdevfs_urb* urb : waiting_)
        End(*urb, -ESHUTDOWN);
    waiting_.clear();
}

int PlayedUsbfs::Reset() {
    ++resets_;
    bridge_.SetPlugged(false); // the firmware starts anew
    bridge_.SetPlugged(true);
    bridge_.InitUSBInterface();
    replies_.clear();
    return 0;
}

void PlayedUsbfs::StrikeAfter(std::uint8_t direction, int after, UsbFault fault) {
    const std::lock_guard lock(mutex_);
    script_ = {direction, after, fault};
}

UsbFault PlayedUsbfs::NextFault(std::uint8_t direction) {
    if (script_ && script_->direction == direction && script_->after-- <= 0) {
        const UsbFault fault = script_->fault;
        script_.reset();
        return fault;
    }
    // A receive that finds nothing is one that the program makes to find nothing.
    const bool idle = direction == kIn && replies_.empty();
    if (injector_ == nullptr || idle || !injector_->Strikes()) return UsbFault::None;
    const std::span faults = direction == kOut ? std::span(kOutFaults) : std::span(kInFaults);
    return faults[static_cast<std::size_t>(injector_->Pick(static_cast<int>(faults.size())))];
}

int PlayedUsbfs::Submit(usbdevfs_urb& urb) {
    urb.actual_length = 0;
    const UsbFault fault = NextFault(urb.endpoint);
    switch (fault) {
    case UsbFault::Refused:
        return -ENOMEM;
    case UsbFault::Protocol:
        End(urb, -EPROTO);
        return 0;
    case UsbFault::Halted:
        End(urb, -EPIPE);
        return 0;
    case UsbFault::Lost:
        waiting_.push_back(&urb);
        if (urb.endpoint == kIn) replies_.clear();
        return 0;
    case UsbFault::Stuck:
        return 0;
    case UsbFault::Pulled:
        waiting_.push_back(&urb);
        PullNow();
        return 0;
    default:
        return urb.endpoint == kOut ? SubmitOut(urb, fault) : SubmitIn(urb, fault);
    }
}

// The firmware sees the bytes and queues its replies.
void PlayedUsbfs::Deliver(const usbdevfs_urb& urb, int count) {
    bridge_.usbSendCmdData(Bytes(urb), static_cast<std::int16_t>(count));
    if (!bridge_.plugged()) {
        PullNow();
        return;
    }
    Reply reply{Clock::now(), std::vector<std::uint8_t>(1024)};
    reply.bytes.resize(static_cast<std::size_t>(bridge_.usbReceiveCmdData(
        reply.bytes.data(), static_cast<std::int16_t>(reply.bytes.size()))));
    if (bridge_.usbGetError() != 0) bridge_.InitUSBInterface(); // it had nothing to say
    if (!reply.bytes.empty()) replies_.push_back(std::move(reply));
}

int PlayedUsbfs::SubmitOut(usbdevfs_urb& urb, UsbFault fault) {
    const bool half = fault == UsbFault::Half || fault == UsbFault::PulledHalf;
    const int count = half ? urb.buffer_length / 2 : urb.buffer_length;
    Deliver(urb, count);
    if (fault == UsbFault::PulledHalf) PullNow();
    if (!plugged_) {
        End(urb, -ESHUTDOWN);
        return 0;
    }
    urb.actual_length = count;
    const bool fails = fault == UsbFault::Half || fault == UsbFault::Unnoticed;
    End(urb, fails ? -EPROTO : 0);
    if (fault == UsbFault::PulledOut) PullNow();
    return 0;
}

int PlayedUsbfs::SubmitIn(usbdevfs_urb& urb, UsbFault fault) {
    if (babbling_ && replies_.empty()) replies_.push_back({Clock::now(), {0x55, 0xAA}});
    if (!replies_.empty()) {
        Reply& reply = replies_.front();
        if (fault == UsbFault::Late) reply.from = Clock::now() + lateness_;
        if (fault == UsbFault::Garbage && injector_ != nullptr) {
            reply.bytes.resize(static_cast<std::size_t>(1 + injector_->Pick(kMostGarbage)));
            std::ranges::generate(reply.bytes,
                                  [&] { return static_cast<std::uint8_t>(injector_->Pick(256)); });
        }
        const bool cut = fault == UsbFault::Split || fault == UsbFault::PulledIn;
        if (cut && reply.bytes.size() > 1) {
            Reply rest{reply.from, {reply.bytes.begin() + 1, reply.bytes.end()}};
            reply.bytes.resize(1);
            if (Fill(urb)) End(urb, 0);
            replies_.push_front(std::move(rest));
            if (fault == UsbFault::PulledIn) PullNow();
            return 0;
        }
    }
    if (Fill(urb)) {
        End(urb, 0);
    } else {
        waiting_.push_back(&urb);
    }
    return 0;
}

// Moves the replies that are due into the transfer; false when none is.
bool PlayedUsbfs::Fill(usbdevfs_urb& urb) {
    while (!replies_.empty() && replies_.front().from <= Clock::now()) {
        std::vector<std::uint8_t>& bytes = replies_.front().bytes;
        const auto room = static_cast<std::size_t>(urb.buffer_length - urb.actual_length);
        const std::size_t count = std::min(room, bytes.size());
        std::copy_n(bytes.begin(), count, Bytes(urb) + urb.actual_length);
        urb.actual_length += static_cast<int>(count);
        bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
        if (!bytes.empty()) break;
        replies_.pop_front();
    }
    return urb.actual_length > 0;
}

int PlayedUsbfs::Reap(void** urb) {
    if (ended_.empty() && !waiting_.empty() && waiting_.front()->endpoint == kIn &&
        Fill(*waiting_.front())) {
        End(*waiting_.front(), 0);
        waiting_.pop_front();
    }
    if (ended_.empty() && !plugged_) return -ENODEV;
    if (ended_.empty()) {
        // umockdev's device files always poll ready: whoever waits on one asks again at once.
        std::this_thread::sleep_for(kBetweenPolls);
        return -EAGAIN;
    }
    *urb = ended_.front();
    ended_.pop_front();
    return 0;
}

int PlayedUsbfs::Discard(const void* urb) {
    const auto found = std::ranges::find(waiting_, urb);
    if (found == waiting_.end()) return -EINVAL;
    End(**found, -ENOENT);
    waiting_.erase(found);
    return 0;
}

} // namespace zentrel
