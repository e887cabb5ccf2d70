#include "transport/monitor/wire_picture.h"

#include <algorithm>

#include "transport/monitor/wire_text.h"

namespace zentrel {
namespace {

using Role = WirePicture::Role;

/// A port write takes about a microsecond: what a step lasts where no time was taken.
constexpr double kUsualStepNs = 1000;

struct Traced {
    WireLevels mask = 0;
    WirePicture::Line line;
};

std::uint16_t MovedPins(const WireRecord& record) {
    WireLevels moved = 0;
    WireLevels last = 0;
    bool first = true;
    EdgeTape::Play(record.edges, [&](WireLevels levels, int) {
        if (!first) moved |= levels ^ last;
        last = levels;
        first = false;
    });
    return static_cast<std::uint16_t>(moved & wire::kPins);
}

std::vector<Traced> LinesOf(const WireRecord& record) {
    const WireMap& map = *record.map;
    const auto bus = static_cast<std::uint16_t>(map.source.clock | map.source.data | map.source.le);
    std::vector<Traced> lines{{wire::kClock, {Role::Clock, "CLK", {}}},
                              {wire::kData, {Role::Data, "DATA", {}}},
                              {wire::kLatch, {Role::Latch, "LE", {}}}};
    const auto pins = static_cast<std::uint16_t>((map.Outputs() & ~bus) | MovedPins(record));
    // The trigger stands beside the lines that it belongs to.
    for (const Role role : {Role::Trigger, Role::Pin}) {
        for (int bit = 0; bit < 16; ++bit) {
            const auto mask = static_cast<std::uint16_t>(1U << bit);
            const Role own = mask == map.trigger ? Role::Trigger : Role::Pin;
            if ((pins & mask) != 0 && own == role)
                lines.push_back({mask, {role, map.PinName(mask), {}}});
        }
    }
    if (record.readBits > 0) lines.push_back({wire::kReadBack, {Role::ReadBack, "READ", {}}});
    return lines;
}

// Where the chip takes a bit, and where the next one of a read-back begins.
struct Clocked {
    std::vector<int> shifts, reads;
};

Clocked ClockedOf(const WireRecord& record) {
    Clocked clocked;
    const bool inverted = record.map->source.invertClock;
    WireLevels last = 0;
    int step = -1;
    EdgeTape::Play(record.edges, [&](WireLevels levels, int steps) {
        const WireLevels changed = levels ^ last;
        const bool rising = (levels & wire::kClock) != 0;
        if (step >= 0 && (changed & wire::kClock) != 0) {
            if ((last & wire::kLatch) == 0) {
                if (rising != inverted) clocked.shifts.push_back(step);
            } else if (rising) {
                clocked.reads.push_back(step);
            }
        }
        last = levels;
        step += steps;
    });
    return clocked;
}

// Halves the time between the edges: a cell has its edge in the middle.
void AddShifted(WirePicture& picture, const WireRecord& record, const std::vector<int>& edges) {
    const BitWord changed = WireChangedBits(record);
    const int count = static_cast<int>(edges.size());
    for (int i = 0; i < count; ++i) {
        const auto at = [&](int k) {
            return static_cast<double>(edges[static_cast<std::size_t>(k)]);
        };
        const double after = i + 1 < count ? (at(i + 1) - at(i)) / 2
                             : i > 0       ? (at(i) - at(i - 1)) / 2
                                           : 1;
        const double ahead = i > 0 ? (at(i) - at(i - 1)) / 2 : after;
        const int number = count - 1 - i;
        picture.bits.push_back({at(i) - ahead, at(i) + after, number, record.word.Test(number),
                                changed.Test(number), false});
    }
}

void AddRead(WirePicture& picture, const WireRecord& record, const std::vector<int>& edges) {
    const auto count = std::min(edges.size(), static_cast<std::size_t>(record.readBits));
    for (std::size_t i = 0; i < count; ++i) {
        const double from = edges[i];
        const double to = i + 1 < edges.size() ? edges[i + 1]
                          : i > 0              ? from + (edges[i] - edges[i - 1])
                                               : from + 2;
        const int number = record.readBits - 1 - static_cast<int>(i);
        picture.bits.push_back({from, to, number, record.readBack.Test(number), false, true});
    }
}

} // namespace

bool WirePicture::Line::High(double step) const {
    const auto after = std::upper_bound(edges.begin(), edges.end(), step,
                                        [](double at, const Edge& edge) { return at < edge.step; });
    return after != edges.begin() && (after - 1)->high;
}

WirePicture PictureOf(const WireRecord& record) {
    WirePicture picture;
    if (record.edges.empty()) return picture;
    std::vector<Traced> lines = LinesOf(record);
    WireLevels last = 0;
    int step = -1;
    EdgeTape::Play(record.edges, [&](WireLevels levels, int steps) {
        for (Traced& traced : lines) {
            if (step >= 0 && ((levels ^ last) & traced.mask) == 0) continue;
            traced.line.edges.push_back({step, (levels & traced.mask) != 0});
        }
        last = levels;
        step += steps;
    });
    picture.steps = std::max(step, 1);
    const auto length = static_cast<double>(record.length.count());
    picture.stepNs = length > 0 ? length / picture.steps : kUsualStepNs;
    picture.estimated = record.route == WireRoute::Usb;
    for (Traced& traced : lines)
        picture.lines.push_back(std::move(traced.line));
    const Clocked clocked = ClockedOf(record);
    AddShifted(picture, record, clocked.shifts);
    AddRead(picture, record, clocked.reads);
    return picture;
}

} // namespace zentrel
