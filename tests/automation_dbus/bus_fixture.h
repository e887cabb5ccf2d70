#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusReply>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/program.h"

namespace zentrel {

inline const char* kFront = "/org/zentrel";
inline const char* kApp = "/org/zentrel/Application";

/// A client with a connection of its own.
class BusClient {
  public:
    explicit BusClient(const QString& address = {})
        : name_(QStringLiteral("client-%1").arg(++made_)),
          bus_(address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)
                                 : QDBusConnection::connectToBus(address, name_)) {}
    ~BusClient() { Leave(); }
    BusClient(const BusClient&) = delete;
    BusClient& operator=(const BusClient&) = delete;

    QDBusConnection& bus() { return bus_; }

    static QDBusMessage Message(const QString& path, const QString& member,
                                const QVariantList& arguments = {}, const QString& interface = {}) {
        auto call = QDBusMessage::createMethodCall(QStringLiteral("org.zentrel.Zentrel"), path,
                                                   interface, member);
        call.setArguments(arguments);
        return call;
    }
    QDBusPendingCall Begin(const QString& path, const QString& member,
                           const QVariantList& arguments = {}) {
        return bus_.asyncCall(Message(path, member, arguments));
    }
    /// Calls and waits. On the program's own thread it goes on serving meanwhile.
    QDBusMessage Call(const QString& path, const QString& member,
                      const QVariantList& arguments = {}, const QString& interface = {}) {
        return Wait(bus_.asyncCall(Message(path, member, arguments, interface)));
    }
    static QDBusMessage Wait(QDBusPendingCall call) {
        if (QThread::currentThread() != qApp->thread()) {
            call.waitForFinished();
            return call.reply();
        }
        QDBusPendingCallWatcher watcher(call);
        QEventLoop loop;
        QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
        QTimer::singleShot(20000, &loop, &QEventLoop::quit);
        if (!watcher.isFinished()) loop.exec();
        EXPECT_TRUE(watcher.isFinished()) << "no answer";
        return watcher.reply();
    }
    /// An operation of the program.
    QDBusMessage Do(const char* operation, const QVariantList& arguments = {}) {
        return Call(QLatin1String(kApp), QLatin1String(operation), arguments,
                    QStringLiteral("org.zentrel.Application"));
    }
    /// Its first result as text, or the name of its error.
    std::string Told(const char* operation, const QVariantList& arguments = {}) {
        return Text(Do(operation, arguments));
    }
    static std::string Text(const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ErrorMessage) return reply.errorName().toStdString();
        const QVariant first = reply.arguments().value(0);
        const QVariant plain = first.metaType() == QMetaType::fromType<QDBusVariant>()
                                   ? qvariant_cast<QDBusVariant>(first).variant()
                                   : first;
        if (plain.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
            return qvariant_cast<QDBusObjectPath>(plain).path().toStdString();
        }
        return plain.toString().toStdString();
    }
    QDBusMessage Get(const QString& path, const char* property) {
        return Call(path, QStringLiteral("Get"), {QString(), QLatin1String(property)});
    }
    QDBusMessage Set(const QString& path, const char* property, const QVariant& value) {
        return Call(path, QStringLiteral("Set"),
                    {QString(), QLatin1String(property), QVariant::fromValue(QDBusVariant(value))});
    }
    void Leave() { QDBusConnection::disconnectFromBus(name_); }

  private:
    inline static int made_ = 0;
    QString name_;
    QDBusConnection bus_;
};

/// The whole program on the tests' bus, over copies of the shipped parts and a simulated board.
class BusTest : public ::testing::Test {
  protected:
    void SetUp() override { StartProgram(); }

    void StartProgram(const QString& address = {}) {
        namespace fs = std::filesystem;
        fs::copy(fs::path(ZENTREL_SOURCE_DIR) / "parts", folder_.path().toStdString(),
                 fs::copy_options::recursive);
        program_ = std::make_unique<Program>(folder_.path().toStdString());
        program_->Ended = [this] { ++ended_; };
        program_->Start();
        ASSERT_EQ(program_->JoinBus(address), dbus::Bus::Joined::AsFirst);
    }
    void TearDown() override { program_.reset(); }

    /// A client in a process of its own, which says when it is ready and then stays.
    static std::unique_ptr<QProcess> Child(const char* what) {
        auto child = std::make_unique<QProcess>();
        child->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child->start(QCoreApplication::applicationFilePath(),
                     {QStringLiteral("--client"), QLatin1String(what)});
        EXPECT_TRUE(child->waitForReadyRead(20000)) << what;
        return child;
    }
    /// Lets clients work on a thread of their own, as they do, while the program serves: a burst
    /// or a message box then holds nobody but the program.
    static void Beside(const std::function<void()>& clients) {
        QEventLoop loop;
        std::thread thread([&] {
            clients();
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        });
        loop.exec();
        thread.join();
    }
    /// Waits beside the program.
    static bool Soon(const std::function<bool()>& holds) {
        for (int i = 0; i < 4000; ++i, QThread::msleep(5))
            if (holds()) return true;
        return false;
    }
    /// Waits on the program's own thread.
    static bool Until(const std::function<bool()>& holds) { return QTest::qWaitFor(holds, 20000); }
    cPart& part() { return program_->part(); }
    FrmPart& frm() { return program_->frm(); }

    QTemporaryDir folder_;
    std::unique_ptr<Program> program_;
    int ended_ = 0;
};

inline QVariant Short(short number) {
    return QVariant::fromValue(number);
}

} // namespace zentrel
