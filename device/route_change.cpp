#include "device/route_change.h"

#include <string>
#include <utility>
#include <vector>

#include "device/part.h"
#include "device/pin_numbers.h"

namespace zentrel {
namespace {

// Pins are read under one route and written under the other, so the selection moves for a moment.
class RouteScope {
  public:
    RouteScope(cPart& part, std::string_view mode)
        : session_(part.session()), before_(std::exchange(session_.CommMode_Select, mode)) {}
    ~RouteScope() { session_.CommMode_Select = std::move(before_); }
    RouteScope(const RouteScope&) = delete;
    RouteScope& operator=(const RouteScope&) = delete;

  private:
    Session& session_;
    std::string before_;
};

struct LinePins {
    std::int32_t clock, data, le;
};

LinePins ReadLines(cPart& part, std::string_view mode) {
    const RouteScope scope(part, mode);
    return {part.ClockPosition(), part.DataPosition(), part.LEPosition()};
}

std::int32_t ReadPosition(cPart& part, const cPrgmPin& pin, std::string_view mode) {
    const RouteScope scope(part, mode);
    return pin.ReadBack() ? part.InputPinPositionINI : pin.Position();
}

} // namespace

void RemapToRoute(cPart& part, std::string_view fromRoute, std::string_view toRoute) {
    // The names may be the selection itself, which moves below.
    const std::string from(fromRoute), to(toRoute);
    std::vector<bool> enabled;
    for (const cPrgmPin& pin : part.PrgmPins)
        enabled.push_back(pin.Enabled());

    const LinePins lines = ReadLines(part, from);
    {
        const RouteScope scope(part, to);
        part.SetClockPosition(lines.clock);
        part.SetDataPosition(lines.data);
        part.SetLEPosition(lines.le);
    }
    for (cPrgmPin& pin : part.PrgmPins) {
        const std::int32_t position = ReadPosition(part, pin, from);
        const RouteScope scope(part, to);
        pin.SetPosition(std::int32_t{position});
    }
    part.ResetOutputPins();
    std::size_t i = 0;
    for (cPrgmPin& pin : part.PrgmPins) {
        const bool on = enabled[i++];
        // An input is no switch; its mask may lie beyond the output state.
        if (!pin.ReadBack()) pin.SetEnabled(on);
    }
    part.upward().route->RouteChanged(from, to);
}

} // namespace zentrel
