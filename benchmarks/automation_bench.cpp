#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <thread>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTemporaryDir>

#include "app/program.h"
#include "screens/qt/theme.h"
#include "tests/automation_dbus/test_bus.h"

/// Calls over the bus from a client on a thread of its own, against an empty method of the same
/// process on the same bus: what is left is the price of the program's own work.
namespace {

using namespace zentrel;

constexpr const char* kYardstick = "org.zentrel.Yardstick";

class EmptyMethod : public QDBusVirtualObject {
  public:
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
        return bus.send(call.createReply());
    }
    QString introspect(const QString&) const override { return {}; }
};

QDBusConnection& Client() {
    static QDBusConnection bus =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("bench"));
    return bus;
}

void Call(benchmark::State& state, const QDBusMessage& call) {
    QDBusMessage reply;
    for (auto _ : state)
        reply = Client().call(call, QDBus::Block);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        state.SkipWithError(reply.errorMessage().toUtf8().constData());
    }
    state.SetItemsProcessed(state.iterations());
}

QDBusMessage Operation(const char* name, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(
        QLatin1String(dbus::kBusName), QStringLiteral("/org/zentrel/Application"),
        QStringLiteral("org.zentrel.Application"), QLatin1String(name));
    call.setArguments(arguments);
    return call;
}

void EmptyMethodOfTheSameProcess(benchmark::State& state) {
    Call(state, QDBusMessage::createMethodCall(QLatin1String(kYardstick), QStringLiteral("/empty"),
                                               QStringLiteral("org.zentrel.Yardstick"),
                                               QStringLiteral("Nothing")));
}

void GetVCOFrequency(benchmark::State& state) {
    Call(state, Operation("GetVCOFrequency", {QStringLiteral("PLL1")}));
}

void SetPrgmBits(benchmark::State& state) {
    Call(state, Operation("SetPrgmBits", {QStringLiteral("N_INT"), 100.0}));
}

void GetBitValueOfTheTree(benchmark::State& state) {
    auto call = QDBusMessage::createMethodCall(
        QLatin1String(dbus::kBusName), QStringLiteral("/org/zentrel/Part/PrgmBits/N_INT"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({QStringLiteral("org.zentrel.cPrgmBits"), QStringLiteral("BitValue")});
    Call(state, call);
}

// The processor's time is that of client and program together, whatever else the machine does.
void OverTheBus(benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMicrosecond)->UseRealTime()->MeasureProcessCPUTime();
}
BENCHMARK(EmptyMethodOfTheSameProcess)->Apply(OverTheBus);
BENCHMARK(GetVCOFrequency)->Apply(OverTheBus);
BENCHMARK(GetBitValueOfTheTree)->Apply(OverTheBus);
BENCHMARK(SetPrgmBits)->Apply(OverTheBus);

} // namespace

int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&argc, argv);
    const QApplication application(argc, argv);
    view::DressApplication(QStringLiteral("light"));
    const TestBus bus;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.Address().toUtf8());

    const QTemporaryDir folder;
    std::filesystem::copy(ZENTREL_SOURCE_DIR "/parts", folder.path().toStdString(),
                          std::filesystem::copy_options::recursive);
    Program program(folder.path().toStdString());
    program.Start();
    std::string part = "QVX2874";
    program.frm().SetupPartForm(part);
    if (program.JoinBus() != dbus::Bus::Joined::AsFirst) return 1;

    EmptyMethod empty;
    auto yardstick =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("yardstick"));
    yardstick.registerVirtualObject(QStringLiteral("/empty"), &empty);
    yardstick.registerService(QLatin1String(kYardstick));

    std::thread client([] {
        benchmark::RunSpecifiedBenchmarks();
        QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
    });
    QApplication::exec();
    client.join();
    return 0;
}
