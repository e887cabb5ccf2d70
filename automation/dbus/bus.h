#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QString>
#include <QTimer>

#include "automation/dbus/service.h"

namespace zentrel::dbus {

inline constexpr const char* kBusName = "org.zentrel.Zentrel";

/// Brings the window of a program that runs already to the front. False when there is none, or no
/// bus to reach it by.
bool RaiseRunningProgram();

/// The service's life on the session bus: the name, the callers' leaving, and the bus's own end,
/// after which it waits for a new one.
class Bus {
  public:
    enum class Joined {
        AsFirst,  ///< The name is ours.
        AsSecond, ///< Another program has it; ours serves nobody.
        NoBus,
    };

    /// `address` of the bus; empty for the session's own.
    explicit Bus(Service& service, QString address = {});
    ~Bus();
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    Joined Join();
    /// Gives the name back, so that the next call starts a program of its own.
    void Leave();
    bool joined() const { return joined_; }

  private:
    QDBusConnection Connect() const;
    QDBusConnection Connection() const { return QDBusConnection(name_); }
    void Watch(const QString& caller);
    void Lost();

    Service& service_;
    QString address_;
    QString name_; // of the connection, within this process
    QDBusServiceWatcher callers_;
    QTimer lost_;
    QTimer again_;
    bool joined_ = false;
};

} // namespace zentrel::dbus
