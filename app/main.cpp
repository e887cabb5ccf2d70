#include <cstdio>
#include <exception>

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

} // namespace

// The command line has no options. Whatever stands there, the window is shown and stays.
int main(int argc, char* argv[]) {
    Application application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zentrel"));
    QApplication::setApplicationVersion(QStringLiteral("4.2.1"));
    QApplication::setDesktopFileName(QStringLiteral("org.zentrel.Zentrel"));
    QApplication::setQuitOnLastWindowClosed(false);
    zentrel::view::DressApplication(qEnvironmentVariable("ZENTREL_THEME"));
    zentrel::Program program(QCoreApplication::applicationDirPath().toStdString());
    program.Start();
    return QApplication::exec();
}
