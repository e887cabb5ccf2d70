#include "automation/dbus/bus.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>

namespace zentrel::dbus {
namespace {

constexpr int kReconnect = 1000; // milliseconds
constexpr int kPatience = 5000;  // for a program that runs already

QDBusConnectionInterface* BusOf(const QDBusConnection& connection) {
    return connection.isConnected() ? connection.interface() : nullptr;
}

} // namespace

bool RaiseRunningProgram() {
    const QString name = QStringLiteral("zentrel-second");
    const QDBusConnection connection =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    bool running = false;
    if (auto* bus = BusOf(connection)) {
        running = bus->isServiceRegistered(QLatin1String(kBusName));
        if (running) {
            auto call = QDBusMessage::createMethodCall(
                QLatin1String(kBusName), QStringLiteral("/org/zentrel"),
                QStringLiteral("org.zentrel.Zentrel"), QStringLiteral("Raise"));
            call.setAutoStartService(false);
            const QDBusMessage answer = connection.call(call, QDBus::Block, kPatience);
            // One that was just about to end leaves the place to the caller.
            if (answer.type() != QDBusMessage::ReplyMessage) {
                running = bus->isServiceRegistered(QLatin1String(kBusName));
            }
        }
    }
    QDBusConnection::disconnectFromBus(name);
    return running;
}

Bus::Bus(Service& service, QString address)
    : service_(service), address_(std::move(address)),
      name_(QStringLiteral("zentrel-%1").arg(reinterpret_cast<quintptr>(this))) {
    callers_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    QObject::connect(&callers_, &QDBusServiceWatcher::serviceUnregistered,
                     [this](const QString& caller) {
                         callers_.removeWatchedService(caller);
                         service_.CallerLeft(caller);
                     });
    service_.CallerHolds = [this](const QString& caller) { Watch(caller); };
    service_.Send = [this](const QDBusMessage& signal) { Connection().send(signal); };
    lost_.setSingleShot(true);
    lost_.callOnTimeout([this] { Lost(); });
    again_.setInterval(kReconnect);
    again_.callOnTimeout([this] {
        if (Join() != Joined::NoBus) again_.stop();
    });
}

Bus::~Bus() {
    service_.CallerHolds = {};
    service_.Send = {};
    Leave();
    QDBusConnection::disconnectFromBus(name_);
}

QDBusConnection Bus::Connect() const {
    return address_.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)
                              : QDBusConnection::connectToBus(address_, name_);
}

Bus::Joined Bus::Join() {
    QDBusConnection connection = Connect();
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(name_);
        return Joined::NoBus;
    }
    callers_.setConnection(connection);
    connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                       QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"),
                       &lost_, SLOT(start()));
    // The objects first: a call may come with the name.
    connection.registerVirtualObject(QStringLiteral("/org/zentrel"), &service_,
                                     QDBusConnection::SubPath);
    joined_ = connection.registerService(QLatin1String(kBusName));
    return joined_ ? Joined::AsFirst : Joined::AsSecond;
}

void Bus::Leave() {
    if (!joined_) return;
    joined_ = false;
    Connection().unregisterService(QLatin1String(kBusName));
}

// A caller may be gone by the time that it is watched.
void Bus::Watch(const QString& caller) {
    if (callers_.watchedServices().contains(caller)) return;
    callers_.addWatchedService(caller);
    auto* bus = BusOf(Connection());
    if (bus == nullptr) return;
    auto* asked = new QDBusPendingCallWatcher(
        bus->asyncCall(QStringLiteral("NameHasOwner"), caller), &callers_);
    QObject::connect(asked, &QDBusPendingCallWatcher::finished, [this, asked, caller] {
        const QDBusReply<bool> here = *asked;
        asked->deleteLater();
        if (here.isValid() && !here.value()) service_.CallerLeft(caller);
    });
}

void Bus::Lost() {
    joined_ = false;
    callers_.setWatchedServices({});
    QDBusConnection::disconnectFromBus(name_);
    service_.BusLeft();
    again_.start();
}

} // namespace zentrel::dbus
