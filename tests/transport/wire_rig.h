#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/transport/rig.h"
#include "transport/monitor/wire_history.h"
#include "transport/monitor/wire_text.h"

namespace zentrel {

/// The rig with fields in its registers, a trigger pin, and the wire monitor's history following.
struct WireRig : Rig {
    explicit WireRig(std::string_view route = kRouteLpt, int bits = 24) : Rig(route, bits) {
        AddField("N", "R0", 4, 12);
        AddField("CP", "R0", 16, 3).SetStringArray({"0.3 mA", "0.6 mA", "0.9 mA", "1.2 mA"});
        AddField("OFFSET", "R1", 4, 8).StepValue = 0.5;
        AddPin("Trigger", 6);
        usbSetupDevice(part);
        monitor.SetClock([this] { return std::chrono::system_clock::time_point(now += tick); });
        history.Follow();
    }

    cPrgmBits& AddField(const std::string& name, const std::string& reg, int position, int length) {
        part.PrgmBits.Add(std::make_shared<cPrgmBits>(part, name, reg,
                                                      static_cast<std::int16_t>(position),
                                                      static_cast<std::int16_t>(length), true),
                          name);
        return part.PrgmBits(name);
    }

    /// What was recorded, in the monitor's one-line form without the time of day.
    std::vector<std::string> Lines() {
        monitor.Settle();
        std::vector<std::string> lines;
        for (std::uint64_t i = history.begin(); i < history.end(); ++i)
            lines.push_back(WireLine(history[i]).substr(std::string("00:00:00.000000 ").size()));
        return lines;
    }
    std::vector<std::string> NewLines() {
        auto lines = Lines();
        history.Clear();
        return lines;
    }
    /// The newest record.
    const WireRecord& Last() {
        monitor.Settle();
        return history[history.end() - 1];
    }
    std::vector<const WireRecord*> All() {
        monitor.Settle();
        std::vector<const WireRecord*> all;
        for (std::uint64_t i = history.begin(); i < history.end(); ++i)
            all.push_back(&history[i]);
        return all;
    }

    std::chrono::nanoseconds now{0}, tick{10'000};
    WireMonitor monitor{part};
    WireHistory history{monitor};
};

} // namespace zentrel
