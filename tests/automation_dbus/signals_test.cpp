#include "tests/automation_dbus/bus_fixture.h"

namespace zentrel {

/// Keeps every signal of one kind that a client hears.
class SignalLog : public QObject {
    Q_OBJECT
  public:
    SignalLog(QDBusConnection bus, const char* path, const char* interface, const char* name) {
        bus.connect(QStringLiteral("org.zentrel.Zentrel"), QLatin1String(path),
                    QLatin1String(interface), QLatin1String(name), this, SLOT(Hear(QDBusMessage)));
    }
    std::vector<QDBusMessage> heard;

  public Q_SLOTS:
    void Hear(const QDBusMessage& message) { heard.push_back(message); }
};

namespace {

constexpr const char* kDevice = "/org/zentrel/Part";
constexpr const char* kManager = "org.freedesktop.DBus.ObjectManager";

using SignalsTest = BusTest;

std::set<std::string> Paths(const SignalLog& log) {
    std::set<std::string> paths;
    for (const QDBusMessage& message : log.heard)
        paths.insert(qvariant_cast<QDBusObjectPath>(message.arguments()[0]).path().toStdString());
    return paths;
}

TEST_F(SignalsTest, whoever_asked_for_all_objects_hears_which_came_and_went) {
    BusClient client;
    SignalLog came(client.bus(), kDevice, kManager, "InterfacesAdded");
    SignalLog went(client.bus(), kDevice, kManager, "InterfacesRemoved");
    client.Do("SelectPart", {QStringLiteral("QVX2874")});
    client.Call(QLatin1String(kDevice), QStringLiteral("GetManagedObjects"));
    QTest::qWait(50);
    EXPECT_TRUE(came.heard.empty()) << "before anybody asked";
    client.Do("SelectPart", {QStringLiteral("QVX4100")});
    ASSERT_TRUE(Until([&] { return !came.heard.empty() && !went.heard.empty(); }));
    EXPECT_TRUE(Until([&] { return Paths(came).contains("/org/zentrel/Part/PLLs/PLL"); }));
    EXPECT_TRUE(Paths(went).contains("/org/zentrel/Part/PLLs/PLL1"));
    EXPECT_FALSE(Paths(went).contains("/org/zentrel/Part/Registers/R0")) << "it is there still";
}

TEST_F(SignalsTest, the_wire_is_told_to_those_who_follow_it_for_as_long_as_they_do) {
    dbus::WireFeed& wire = program_->service().wire();
    std::vector<bool> followed;
    const auto connected = wire.Followed;
    wire.Followed = [&](bool now) {
        followed.push_back(now);
        if (connected) connected(now);
    };
    const auto send = [&](const char* text) { wire.Take([text] { return std::string(text); }); };
    const QString path = QStringLiteral("/org/zentrel/Wire");
    auto client = std::make_unique<BusClient>();
    BusClient other;
    SignalLog words(client->bus(), "/org/zentrel/Wire", "org.zentrel.Wire", "Words");
    SignalLog others(other.bus(), "/org/zentrel/Wire", "org.zentrel.Wire", "Words");
    other.Do("SelectPart", {QStringLiteral("QVX2874")});
    client->Call(path, QStringLiteral("Follow"));
    other.Do("LoadReg", {Short(0)});
    ASSERT_TRUE(Until([&] { return !words.heard.empty(); }));
    EXPECT_THAT(words.heard[0].arguments()[0].toStringList().join(QLatin1Char(' ')).toStdString(),
                testing::HasSubstr("LPT R5 0x0002BD"));
    for (int i = 0; i < dbus::WireFeed::kBatch + 5; ++i)
        send("R0");
    ASSERT_TRUE(Until([&] { return words.heard.size() >= 2; }));
    EXPECT_EQ(words.heard[1].arguments()[1].toInt(), 5) << "left out, and said so";
    EXPECT_TRUE(others.heard.empty());
    client.reset();
    EXPECT_TRUE(Until([&] { return followed == std::vector<bool>{true, false}; }));
    EXPECT_EQ(ended_, 0) << "a follower holds no window";
}

} // namespace
} // namespace zentrel

#include "signals_test.moc"
