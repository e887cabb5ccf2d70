#include <algorithm>
#include <cstdio>
#include <exception>
#include <string_view>

#include <QApplication>
#include <QStyle>

#include "app/program.h"
#include "screens/qt/style.h"
#include "screens/qt/theme.h"

namespace {

/// Where the toolkit hands out events. The models' own failures end at their guard; what still
/// comes up to here is told on the error output, and the program goes on.
class Application : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& failure) {
            std::fprintf(stderr, "Zentrel: %s\n", failure.what());
        } catch (...) {
            std::fprintf(stderr, "Zentrel: a failure without a name\n");
        }
        return false;
    }
};

// How the bus starts the program for a call, and an engineer never does.
constexpr std::string_view kAutomation = "--automation";

// On a bench without a display a call still gets its program.
void DrawIntoMemoryWithoutDisplay() {
    for (const char* display : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        if (!qEnvironmentVariableIsEmpty(display)) return;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace

// The command line tells the kind of start and nothing else: on behalf of a call, or by an
// engineer, who gets the window of the program that runs already. Either way the window is shown
// and stays until it is closed or the last client has gone.
int main(int argc, char* argv[]) {
    const bool forCall = std::find(argv + 1, argv + argc, kAutomation) != argv + argc;
    if (forCall) DrawIntoMemoryWithoutDisplay();
    Application application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zentrel"));
    QApplication::setApplicationVersion(QStringLiteral("4.2.1"));
    QApplication::setDesktopFileName(QStringLiteral("org.zentrel.Zentrel"));
    QApplication::setQuitOnLastWindowClosed(false);
    if (!forCall && zentrel::dbus::RaiseRunningProgram()) return 0;
    zentrel::view::DressApplication(qEnvironmentVariable("ZENTREL_THEME"));
    zentrel::Program program(QCoreApplication::applicationDirPath().toStdString());
    // Two starts at once: the one that got the name stays, and the other never touches the board.
    if (program.JoinBus() == zentrel::dbus::Bus::Joined::AsSecond) {
        zentrel::dbus::RaiseRunningProgram();
        return 0;
    }
    program.Start();
    return QApplication::exec();
}
