#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "transport/monitor/wire_record.h"

namespace zentrel {

/// A record as a timing diagram: every line with its edges over time. Time is counted in steps: on
/// the parallel port one write to the port, over the bridge one change of its pins.
struct WirePicture {
    enum class Role { Clock, Data, Latch, Trigger, Pin, ReadBack };

    struct Edge {
        int step = 0;
        bool high = false;
    };
    struct Line {
        Role role = Role::Clock;
        std::string name;        ///< "CLK", "DATA", "LE", the pin's name, "READ".
        std::vector<Edge> edges; ///< The first at step -1: the level before.
        bool High(double step) const;
    };
    /// A bit that was clocked, over the time in which the chip takes it.
    struct Bit {
        double from = 0, to = 0; ///< Steps.
        int number = 0;          ///< 0 for the least significant.
        bool high = false;
        bool changed = false;  ///< Against the word before of the same register.
        bool readBack = false; ///< It came back.
    };

    std::vector<Line> lines;
    std::vector<Bit> bits; ///< In time's order.
    int steps = 0;         ///< The end of the last level.
    /// Nanoseconds of a step. Only the whole record's time is measured: its steps share it.
    double stepNs = 0;
    /// The bridge shifts in its own time, between the packet and the acknowledgement: its steps
    /// aren't true to scale.
    bool estimated = false;

    bool empty() const { return steps == 0; }
};

/// The lines of the bus, all output pins of the device with whatever else moved, and the read-back
/// input if something was read. Empty for a record in which no line moved.
WirePicture PictureOf(const WireRecord& record);

} // namespace zentrel
