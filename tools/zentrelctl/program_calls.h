#pragma once

#include <functional>
#include <stdexcept>
#include <string>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariant>

#include "tools/zentrelctl/introspection_reader.h"

namespace zentrel::ctl {

/// The program's answer to a call is an error.
class CallFailed : public std::runtime_error {
  public:
    CallFailed(const QString& name, const QString& text)
        : std::runtime_error(text.toStdString()), name_(name) {}
    const QString& name() const { return name_; }

  private:
    QString name_;
};

/// There is no program to call, nor one that the bus could start.
class NoProgram : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The running program on the session bus, or the one that the bus starts for the first call.
class ProgramCalls {
  public:
    explicit ProgramCalls(QDBusConnection bus) : bus_(std::move(bus)) {}

    /// Waits for the answer however long it takes: a burst may run for hours.
    QVariantList Call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments) const;
    Node Introspect(const QString& path) const;
    QVariant Get(const QString& path, const QString& interface, const QString& property) const;
    QVariantMap GetAll(const QString& path, const QString& interface) const;
    void Set(const QString& path, const QString& interface, const QString& property,
             const QVariant& value) const;
    /// Whether the program runs already.
    bool Running() const;
    const QDBusConnection& bus() const { return bus_; }

  private:
    QDBusConnection bus_;
};

inline const QString kBusName = QStringLiteral("org.zentrel.Zentrel");
inline const QString kApplicationPath = QStringLiteral("/org/zentrel/Application");
inline const QString kRootPath = QStringLiteral("/org/zentrel");

} // namespace zentrel::ctl
