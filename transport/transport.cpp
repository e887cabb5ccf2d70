#include "transport/transport.h"

#include "device/part.h"
#include "transport/lpt_route.h"
#include "transport/usb_bridge.h"
#include "transport/usb_presence.h"

namespace zentrel {

Transport::Transport(cPart& part, const Drivers& drivers)
    : part_(part), port_(&drivers.port), bridge_(&drivers.bridge), watch_(&drivers.watch),
      tappedPort_(drivers.port, wire_), tappedBridge_(drivers.bridge, wire_) {
    part.SetTransport(this);
}

Transport::~Transport() {
    UnregisterWatch();
    if (part_.transport() == this) part_.SetTransport(nullptr);
}

void Transport::Use(const Drivers& drivers) {
    const bool watched = registered_;
    UnregisterWatch();
    port().CloseTVicPort();

    port_ = &drivers.port;
    bridge_ = &drivers.bridge;
    watch_ = &drivers.watch;
    tappedPort_.Attach(drivers.port);
    tappedBridge_.Attach(drivers.bridge);
    received_.Clear(); // the other bridge's bytes

    ReopenPortDriver(part_);
    if (watched) RegisterForNotifications(part_);
    if (usbConnected(part_) != 0) usbSetupDevice(part_);
}

int Transport::RegisterWatch() {
    UnregisterWatch();
    const int error = watch_->Register(*this);
    registered_ = error == 0;
    return error;
}

void Transport::UnregisterWatch() {
    if (!registered_) return;
    watch_->Unregister();
    registered_ = false;
}

void Transport::DeviceChanged(const DeviceEvent& event) {
    if (hooked_) HandleDeviceChange(part_, event);
}

} // namespace zentrel
