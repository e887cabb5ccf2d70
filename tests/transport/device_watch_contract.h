#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "transport/usb_presence.h"

/// What every device watch has to keep. A test program includes this once and instantiates it with
/// its rows.
namespace zentrel {

/// A watch and a bridge that comes and goes before its eyes.
struct WatchUnderTest {
    virtual ~WatchUnderTest() = default;
    virtual DeviceWatch& watch() = 0;
    virtual void Attach(const std::string& serial) = 0;
    virtual void Remove(const std::string& serial) = 0;
};

struct WatchRow {
    const char* name;
    std::function<std::unique_ptr<WatchUnderTest>()> make;
};

class DeviceWatchContract : public ::testing::TestWithParam<WatchRow> {
  protected:
    struct Sink : DeviceEvents {
        void DeviceChanged(const DeviceEvent& event) override { events.push_back(event); }
        std::vector<DeviceEvent> events;
    } sink;
    std::unique_ptr<WatchUnderTest> made = GetParam().make();
};

TEST_P(DeviceWatchContract, tells_of_the_bridge_between_register_and_unregister) {
    made->Attach("A1");
    EXPECT_EQ(made->watch().Register(sink), 0);
    made->Attach("B2");
    made->Remove("B2");
    made->watch().Unregister();
    made->watch().Unregister();
    made->Attach("C3");

    ASSERT_EQ(sink.events.size(), 2U);
    EXPECT_EQ(sink.events[0].event, DeviceEvent::kArrival);
    EXPECT_EQ(sink.events[1].event, DeviceEvent::kRemoval);
    for (const DeviceEvent& event : sink.events) {
        EXPECT_EQ(event.deviceType, DeviceEvent::kInterface);
        const auto name = ParseDeviceName(event.name);
        ASSERT_TRUE(name) << event.name;
        EXPECT_TRUE(name->isBridge());
        EXPECT_EQ(name->serial, "B2");
    }
}

} // namespace zentrel
