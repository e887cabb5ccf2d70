#include <cstdio>

#include <QApplication>

#include <gtest/gtest.h>

#include "screens/qt/theme.h"
#include "tests/automation_dbus/bus_fixture.h"
#include "tests/automation_dbus/test_bus.h"

namespace {

// A bench program of its own: takes an object and stays, or starts a burst besides and stays in it.
int RunClient(const std::string& what) {
    zentrel::BusClient client;
    const auto created = client.bus().call(
        zentrel::BusClient::Message(QLatin1String(zentrel::kFront), QStringLiteral("Create")));
    if (created.type() != QDBusMessage::ReplyMessage) return 1;
    if (what == "burst") client.Begin(QLatin1String(zentrel::kApp), QStringLiteral("StartBurst"));
    std::puts("ready");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

} // namespace

// The real program on a real bus, on a platform that draws into memory.
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 3 && std::string_view(argv[1]) == "--client") {
        const QCoreApplication application(argc, argv);
        return RunClient(argv[2]);
    }
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    zentrel::view::DressApplication(QStringLiteral("light"));
    const zentrel::TestBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.Address().toUtf8());
    return RUN_ALL_TESTS();
}
