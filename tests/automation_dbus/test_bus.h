#pragma once

#include <memory>
#include <string>

#include <QByteArray>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace zentrel {

/// A message bus of the tests' own, with the program's service file on it: a call starts the
/// program when nothing has its name.
class TestBus {
  public:
    TestBus() {
        const auto write = [this](const char* name, const QString& text) {
            QFile file(folder_.filePath(QLatin1String(name)));
            file.open(QIODevice::WriteOnly);
            file.write(text.toUtf8());
        };
        write("bus.conf",
              QStringLiteral("<busconfig><type>session</type><listen>%1</listen>"
                             "<servicedir>%2</servicedir><auth>EXTERNAL</auth>"
                             "<policy context=\"default\"><allow send_destination=\"*\"/>"
                             "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy>"
                             "<limit name=\"max_replies_per_connection\">50000</limit>"
                             "</busconfig>")
                  .arg(Address(), folder_.path()));
        write("org.zentrel.Zentrel.service",
              QStringLiteral("[D-BUS Service]\nName=org.zentrel.Zentrel\n"
                             "Exec=/usr/bin/env -u QT_QPA_PLATFORM -u DISPLAY "
                             "-u WAYLAND_DISPLAY %1/zentrel "
                             "--automation\n")
                  .arg(folder_.path()));
        // A program of its own folder: what it writes is its own too.
        QFile::copy(QStringLiteral(ZENTREL_PROGRAM), folder_.filePath(QStringLiteral("zentrel")));
        for (const char* name : {"zentrel.ini", "QVX2874.ini"})
            QFile::copy(QStringLiteral(ZENTREL_SOURCE_DIR "/parts/") + QLatin1String(name),
                        folder_.filePath(QLatin1String(name)));
        Start();
    }
    ~TestBus() { Stop(); }
    TestBus(const TestBus&) = delete;
    TestBus& operator=(const TestBus&) = delete;

    void Start() {
        daemon_ = std::make_unique<QProcess>();
        daemon_->setStandardErrorFile(QProcess::nullDevice());
        daemon_->start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--nofork"), QStringLiteral("--print-address"),
             QStringLiteral("--config-file=") + folder_.filePath(QStringLiteral("bus.conf"))});
        while (!daemon_->canReadLine() && daemon_->waitForReadyRead(5000)) {
        }
    }
    void Stop() {
        daemon_->kill();
        daemon_->waitForFinished();
    }
    QString Address() const {
        return QStringLiteral("unix:path=") + folder_.filePath(QStringLiteral("bus"));
    }

  private:
    QTemporaryDir folder_;
    std::unique_ptr<QProcess> daemon_;
};

} // namespace zentrel
