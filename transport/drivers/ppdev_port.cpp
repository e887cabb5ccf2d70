#include "transport/drivers/ppdev_port.h"

#include <fcntl.h>
#include <linux/ppdev.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "device/number_text.h"
#include "transport/drivers/parport_tree.h"
#include "transport/lpt_route.h"

namespace zentrel {
namespace {

constexpr std::uint8_t kNothingThere = 0xFF;

std::string Hex(std::uint16_t address) {
    return HexText(std::int32_t{address});
}

std::string NoSuchPort(std::uint16_t base, const std::vector<ParallelPort>& ports) {
    if (ports.empty()) {
        return "The kernel knows no parallel port.\n"
               "If the machine has one, load its driver: sudo modprobe parport_pc";
    }
    std::string text = "There is no parallel port at address " + Hex(base) + ". There is";
    const char* before = " ";
    for (const ParallelPort& port : ports)
        text += std::exchange(before, ", ") + port.name + " at " + Hex(port.base);
    return text + ".\nChoose that address on the port setup screen or in the part's setup.";
}

std::string CannotOpen(const std::string& node, int error) {
    if (error == EACCES || error == EPERM) {
        return "You may not open " + node +
               ".\nJoin the group that owns it, and log in again: sudo usermod -aG lp $USER";
    }
    if (error == ENOENT || error == ENODEV || error == ENXIO) {
        return "The port is there, but not its device " + node +
               ".\nLoad the module that makes it: sudo modprobe ppdev";
    }
    return node + " can't be opened: " + std::strerror(error) + ".";
}

std::string InUse(const std::string& node, const std::string& holder) {
    const std::string who = holder.empty() ? "Another program" : "Another program (" + holder + ")";
    return who + " has " + node + " claimed.\nEnd that program, then check the port again.";
}

} // namespace

PpdevPort::PpdevPort(const cPart& part, Paths paths) : part_(part), paths_(std::move(paths)) {}

std::int16_t PpdevPort::OpenTVicPort() {
    wanted_ = true;
    Claim(Wanted());
    return port_.open() ? std::int16_t{1} : kOpenFailed;
}

void PpdevPort::CloseTVicPort() {
    wanted_ = false;
    Release();
}

void PpdevPort::Release() {
    if (!port_.open()) return;
    ::ioctl(port_.get(), PPRELEASE);
    port_.Close();
}

std::uint16_t PpdevPort::Wanted() const {
    const std::uint16_t address = DataPort(part_);
    return address != 0 ? address : static_cast<std::uint16_t>(PortAddressOfOption(0));
}

void PpdevPort::Claim(std::uint16_t base) {
    Release();
    base_ = base;
    const auto ports = ListParallelPorts(paths_.tree);
    const auto port = std::ranges::find(ports, base, &ParallelPort::base);
    if (port == ports.end()) {
        diagnosis_ = NoSuchPort(base, ports);
        return;
    }
    const std::string node = (paths_.nodes / port->name).string();
    FileDescriptor opened(::open(node.c_str(), O_RDWR | O_CLOEXEC));
    if (!opened.open()) {
        diagnosis_ = CannotOpen(node, errno);
        return;
    }
    // The kernel's claim waits until the holder lets go, which may be never: so ask first.
    if (!port->holder.empty() || ::ioctl(opened.get(), PPCLAIM) != 0) {
        diagnosis_ = InUse(node, port->holder);
        return;
    }
    port_ = std::move(opened);
    diagnosis_.clear();
}

bool PpdevPort::Ready() {
    if (!wanted_) return false;
    if (const std::uint16_t base = Wanted(); base != base_) Claim(base);
    return port_.open();
}

bool PpdevPort::Control(unsigned long request, std::uint8_t* value) {
    if (::ioctl(port_.get(), request, value) == 0) return true;
    diagnosis_ = "The parallel port at address " + Hex(base_) +
                 " is gone: " + std::strerror(errno) + ".\nCheck the port again when it is back.";
    Release();
    return false;
}

void PpdevPort::WritePort(std::uint16_t address, std::uint8_t value) {
    if (!Ready()) return;
    if (address == base_) {
        Control(PPWDATA, &value);
    } else if (address == static_cast<std::uint16_t>(base_ + 2)) {
        Control(PPWCONTROL, &value);
    }
}

std::uint8_t PpdevPort::ReadPort(std::uint16_t address) {
    static constexpr unsigned long kReads[] = {PPRDATA, PPRSTATUS, PPRCONTROL};
    if (!Ready()) return kNothingThere;
    const auto offset = static_cast<std::uint16_t>(address - base_);
    std::uint8_t value = kNothingThere;
    if (offset >= std::size(kReads) || !Control(kReads[offset], &value)) return kNothingThere;
    return value;
}

} // namespace zentrel
