#include <QApplication>

#include <gtest/gtest.h>

#include "screens/qt/theme.h"

// The real widgets, on a platform that draws into memory.
int main(int argc, char* argv[]) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    zentrel::view::DressApplication(QStringLiteral("light"));
    return RUN_ALL_TESTS();
}
