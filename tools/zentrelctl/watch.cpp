#include "tools/zentrelctl/watch.h"

#include <cstdio>

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QEventLoop>

#include "tools/zentrelctl/json.h"
#include "tools/zentrelctl/program_calls.h"

namespace zentrel::ctl {

namespace {

const QString kWirePath = QStringLiteral("/org/zentrel/Wire");
const QString kWire = QStringLiteral("org.zentrel.Wire");

} // namespace

Watch::Watch(const ProgramCalls& program, bool json) : program_(program), json_(json) {}

void Watch::Run() {
    QDBusConnection bus = program_.bus();
    bus.connect(kBusName, kWirePath, kWire, QStringLiteral("Words"), this,
                SLOT(Print(QStringList, int)));
    program_.Call(kWirePath, kWire, QStringLiteral("Follow"), {});
    QEventLoop loop;
    const QDBusServiceWatcher watcher(kBusName, bus, QDBusServiceWatcher::WatchForUnregistration);
    connect(&watcher, &QDBusServiceWatcher::serviceUnregistered, &loop, &QEventLoop::quit);
    bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), &loop,
                SLOT(quit()));
    loop.exec();
}

void Watch::Print(const QStringList& lines, int leftOut) {
    for (const QString& line : lines) {
        const QByteArray text = (json_ ? JsonOf(line) : line).toUtf8();
        std::printf("%s\n", text.constData());
    }
    if (leftOut > 0) std::fprintf(stderr, "zentrelctl: %d lines left out\n", leftOut);
    std::fflush(stdout);
}

} // namespace zentrel::ctl
