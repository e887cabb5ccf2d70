#include "tools/zentrelctl/program_calls.h"

#include <limits>

#include <QDBusConnectionInterface>
#include <QDBusVariant>

#include "tools/zentrelctl/text_values.h"

namespace zentrel::ctl {

namespace {

const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");

bool MeansNoProgram(const QString& error) {
    return error == QLatin1String("org.freedesktop.DBus.Error.ServiceUnknown") ||
           error == QLatin1String("org.freedesktop.DBus.Error.NameHasNoOwner") ||
           error == QLatin1String("org.freedesktop.DBus.Error.Disconnected") ||
           error == QLatin1String("org.freedesktop.DBus.Error.TimedOut") || // of its start
           error.startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn"));
}

} // namespace

QVariantList ProgramCalls::Call(const QString& path, const QString& interface,
                                const QString& method, const QVariantList& arguments) const {
    QDBusMessage call = QDBusMessage::createMethodCall(kBusName, path, interface, method);
    call.setArguments(arguments);
    const QDBusMessage answer = bus_.call(call, QDBus::Block, std::numeric_limits<int>::max());
    if (answer.type() == QDBusMessage::ReplyMessage) return answer.arguments();
    if (MeansNoProgram(answer.errorName()) || answer.type() == QDBusMessage::InvalidMessage) {
        throw NoProgram("Zentrel isn't running, and the bus can't start it: " +
                        answer.errorMessage().toStdString());
    }
    throw CallFailed(answer.errorName(), answer.errorMessage());
}

Node ProgramCalls::Introspect(const QString& path) const {
    const auto answer = Call(path, QStringLiteral("org.freedesktop.DBus.Introspectable"),
                             QStringLiteral("Introspect"), {});
    return ReadIntrospection(answer.value(0).toString());
}

QVariant ProgramCalls::Get(const QString& path, const QString& interface,
                           const QString& property) const {
    return Unwrapped(
        Call(path, kProperties, QStringLiteral("Get"), {interface, property}).value(0));
}

QVariantMap ProgramCalls::GetAll(const QString& path, const QString& interface) const {
    return Unwrapped(Call(path, kProperties, QStringLiteral("GetAll"), {interface}).value(0))
        .toMap();
}

void ProgramCalls::Set(const QString& path, const QString& interface, const QString& property,
                       const QVariant& value) const {
    Call(path, kProperties, QStringLiteral("Set"),
         {interface, property, QVariant::fromValue(QDBusVariant(value))});
}

bool ProgramCalls::Running() const {
    return bus_.interface() != nullptr && bus_.interface()->isServiceRegistered(kBusName);
}

} // namespace zentrel::ctl
