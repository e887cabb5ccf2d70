#include "automation/dbus/object_news.h"

#include <utility>

#include "burst/burst.h"
#include "clock/clk_dist.h"
#include "device/part.h"
#include "synth/pll.h"

namespace zentrel::dbus {

ObjectNews::Shape ObjectNews::Now() const {
    return {part_.ID,
            {part_.Registers.Count(), part_.PrgmBits.Count(), part_.PrgmPins.Count(),
             part_.PLLs.Count(), part_.ClkDists.Count(), part_.BurstCmds.Count()},
            part_.Registers.empty() ? nullptr : &part_.Registers(1)};
}

void ObjectNews::Begin() {
    if (std::exchange(asked_, true)) return;
    told_ = Now();
    objects_.Walk(kFrontDoor, [&](const std::string& path, const objects::ObjectRef& object) {
        listed_.emplace(path, &object.table());
    });
}

void ObjectNews::Tell() {
    if (!asked_) return;
    if (Shape now = Now(); now == told_) {
        return;
    } else {
        told_ = std::move(now);
    }
    const Listed before = std::exchange(listed_, {});
    objects_.Walk(kFrontDoor, [&](const std::string& path, const objects::ObjectRef& object) {
        listed_.emplace(path, &object.table());
    });
    for (const auto& [path, table] : before)
        if (!listed_.contains(path)) Went(path, *table);
    for (const auto& [path, table] : listed_)
        if (!before.contains(path)) Came(path, objects_.Find(path));
}

} // namespace zentrel::dbus
