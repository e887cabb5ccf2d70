#pragma once

#include "transport/monitor/bridge_trace.h"
#include "transport/monitor/port_trace.h"
#include "transport/monitor/record_maker.h"
#include "transport/wire_log.h"

namespace zentrel {

/// Turns what passes the drivers into records, and publishes them to whoever follows: the wire
/// monitor's list, a stream to another program. It listens for as long as somebody follows; with
/// nobody there the drivers are called as if it didn't exist.
class WireMonitor final : private WireListener {
  public:
    explicit WireMonitor(cPart& part);
    ~WireMonitor() override;
    WireMonitor(const WireMonitor&) = delete;
    WireMonitor& operator=(const WireMonitor&) = delete;

    /// A follower hears every record that begins from now on.
    void Add(WireFollower& follower);
    void Remove(WireFollower& follower);
    bool followed() const { return maker_.followed(); }

    /// To be called where an event has ended and no word is under way: a pin that was set, or a
    /// command whose buffer never ran, is complete then and isn't held back for what may follow.
    void Settle();

    /// Where the times come from; the system's clock unless told otherwise.
    void SetClock(std::function<std::chrono::system_clock::time_point()> now) {
        maker_.SetClock(std::move(now));
    }

  private:
    void PortOpened(std::int16_t result) override;
    void PortClosed() override;
    void PortWritten(std::uint16_t address, std::uint8_t value) override;
    void PortRead(std::uint16_t address, std::uint8_t value) override;
    void BridgeOpened(std::int16_t error) override;
    void PacketSent(std::span<const std::uint8_t> packet, int sent) override;
    void BytesReceived(std::span<const std::uint8_t> bytes) override;
    void TellPort(bool opened, std::int16_t result);

    cPart& part_;
    RecordMaker maker_;
    PortTrace port_{maker_};
    BridgeTrace bridge_{maker_};
    WireRecord link_;
};

} // namespace zentrel
