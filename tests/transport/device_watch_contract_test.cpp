#include <functional>
#include <memory>

#include <gmock/gmock.h>

#include "transport/bench/simulated_watch.h"
#include "transport/usb_presence.h"

// What every device watch has to keep. One joins by one more row of kWatches.
namespace zentrel {
namespace {

/// A watch and a bridge that comes and goes before its eyes.
struct WatchUnderTest {
    virtual ~WatchUnderTest() = default;
    virtual DeviceWatch& watch() = 0;
    virtual void Attach(const std::string& serial) = 0;
    virtual void Remove(const std::string& serial) = 0;
};

struct Simulated : WatchUnderTest {
    DeviceWatch& watch() override { return simulated; }
    void Attach(const std::string& serial) override { simulated.BridgeAttached(serial); }
    void Remove(const std::string& serial) override { simulated.BridgeRemoved(serial); }
    SimulatedWatch simulated;
};

struct Row {
    const char* name;
    std::function<std::unique_ptr<WatchUnderTest>()> make;
};

const Row kWatches[] = {{"Simulated", [] { return std::make_unique<Simulated>(); }}};

class DeviceWatchContract : public ::testing::TestWithParam<Row> {
  protected:
    struct Sink : DeviceEvents {
        void DeviceChanged(const DeviceEvent& event) override { events.push_back(event); }
        std::vector<DeviceEvent> events;
    } sink;
    std::unique_ptr<WatchUnderTest> made = GetParam().make();
};

INSTANTIATE_TEST_SUITE_P(Watches, DeviceWatchContract, ::testing::ValuesIn(kWatches),
                         [](const auto& info) { return std::string(info.param.name); });

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

} // namespace
} // namespace zentrel
