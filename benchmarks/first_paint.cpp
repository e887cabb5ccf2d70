// How long the program takes from its start until its window has been painted, seen from outside:
// from the moment before the process is made to the first picture of the screen that shows the
// window's tab strip.
//
//   first_paint PROGRAM RUNS
//
// benchmarks/start_time runs it on the staged program.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QThread>

namespace {

constexpr int kGiveUp = 10'000; // ms

/// The left part of menu bar and tab strip: text on it is the last thing that a window paints.
QImage Corner() {
    constexpr int kWidth = 300, kHeight = 60;
    return QGuiApplication::primaryScreen()->grabWindow(0, 0, 0, kWidth, kHeight).toImage();
}

/// Text stands there: pixels of several shades.
bool Painted(const QImage& now, const QImage& blank) {
    constexpr int kSome = 200;
    int other = 0;
    const QRgb ground = now.pixel(0, 0);
    if (now == blank) return false;
    for (int y = 0; y < now.height(); ++y)
        for (int x = 0; x < now.width(); ++x)
            other += now.pixel(x, y) != ground;
    return other > kSome && other < now.width() * now.height() * 3 / 4;
}

/// In milliseconds; negative when no window came.
double OneStart(const QString& program, const QImage& blank) {
    QProcess process;
    QElapsedTimer clock;
    clock.start();
    process.start(program, QStringList());
    double painted = -1;
    while (painted < 0 && clock.elapsed() < kGiveUp)
        if (Painted(Corner(), blank)) painted = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    process.terminate();
    process.waitForFinished();
    while (Corner() != blank && clock.elapsed() < 2 * kGiveUp)
        QThread::msleep(5);
    return painted;
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "first_paint PROGRAM RUNS\n");
        return 2;
    }
    const QImage blank = Corner();
    OneStart(QString::fromLocal8Bit(argv[1]), blank); // Fills the system's caches.
    std::vector<double> runs;
    for (int run = 0; run < std::atoi(argv[2]); ++run)
        runs.push_back(OneStart(QString::fromLocal8Bit(argv[1]), blank));
    std::sort(runs.begin(), runs.end());
    if (runs.empty() || runs.front() < 0) {
        std::fprintf(stderr, "first_paint: the window never came\n");
        return 1;
    }
    std::printf("start to painted window: median %.0f ms (%.0f to %.0f, %zu runs)\n",
                runs[runs.size() / 2], runs.front(), runs.back(), runs.size());
    return 0;
}
