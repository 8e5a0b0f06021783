#include "bench/benches.h"
#include "bench/mapgen.h"

#include "shell/widgets/mainwindow.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace plotwell::bench {
namespace {

// Lets the window's own event loop, frame clock included, run for a while.
void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// Frames of the window's render loop; whole ones paint the map's picture again.
double meanFrameMs(MainWindow& window, int frames, bool whole)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < frames; ++i) {
        if (whole) {
            window.editor().frameDirty = true;
            window.editor().picture.forget();
        }
        window.frameTick();
    }
    return double(timer.nsecsElapsed()) / 1e6 / frames;
}

// What the window's loop costs on one screen: the processor's share while it
// idles (the frames stand, or only the selection flashes), then a whole
// frame and a flash frame.
struct IdleFigures {
    double idlePercent;
    double fullMs;
    double flashMs;
};

IdleFigures measure(MainWindow& window, double seconds)
{
    runFor(500); // the frames after the load, or after a move to another screen
    const std::clock_t cpuBefore = std::clock();
    QElapsedTimer wall;
    wall.start();
    runFor(int(seconds * 1000));
    const double cpu = double(std::clock() - cpuBefore) / CLOCKS_PER_SEC;
    IdleFigures figures{cpu / (double(wall.nsecsElapsed()) / 1e9) * 100, meanFrameMs(window, 20, true), 0};
    MapDocument& doc = window.editor().doc;
    const bool selected = doc.hasSelection();
    if (!selected) {
        for (std::size_t i = 0; i < doc.lineCount(); i += 100)
            doc.setLineSelected(i, true);
    }
    figures.flashMs = meanFrameMs(window, 40, false);
    if (!selected)
        doc.clearSelection();
    return figures;
}

void printFigures(const char* prefix, const IdleFigures& f)
{
    std::printf("%sidle_cpu_percent: %.2f\n%sfull_frame_ms: %.2f\n%sflash_frame_ms: %.2f\n%sflash_ratio: %.2f\n",
                prefix, f.idlePercent, prefix, f.fullMs, prefix, f.flashMs, prefix,
                f.fullMs > 0 ? f.flashMs / f.fullMs : 0.0);
}

// The screen of this device pixel ratio, when there is one.
QScreen* screenOfRatio(double ratio)
{
    for (QScreen* screen : QGuiApplication::screens())
        if (qFuzzyCompare(screen->devicePixelRatio(), ratio))
            return screen;
    return nullptr;
}

} // namespace

int runIdleBench(const QStringList& args)
{
    const auto lineCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 10000)));
    const auto labelCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--labels"), 500)));
    const double seconds = double(std::max(1LL, argValue(args, QStringLiteral("--seconds"), 5)));
    const auto selectCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--select"), 0)));
    const double ratio = argText(args, QStringLiteral("--ratio"), QStringLiteral("1")).toDouble();
    QScreen* screen = screenOfRatio(ratio);
    if (!screen) {
        std::fprintf(stderr, "idle: no screen of %g device pixels to a logical one\n", ratio);
        return 2;
    }

    QTemporaryDir dir;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path()); // never the user's settings
    const QString map = dir.filePath(QStringLiteral("zone.txt"));
    writeMapFile(map, lineCount, labelCount);
    MainWindow window;
    window.ended = [] {};
    window.move(screen->availableGeometry().topLeft());
    window.show();
    window.openFiles({map});
    // Lines spread over the whole map, flashing while the loop runs.
    MapDocument& doc = window.editor().doc;
    const std::size_t lines = doc.lineCount();
    for (std::size_t k = 0; k < std::min(selectCount, lines); ++k)
        doc.setLineSelected(k * lines / std::min(selectCount, lines), true);

    const IdleFigures atRatio = measure(window, seconds);
    std::printf("lines: %zu\nlabels: %zu\nselected: %zu\nseconds: %g\n", doc.lineCount(), doc.labelCount(),
                std::min(selectCount, lines), seconds);
    const QSize device = window.mapImage().size();
    std::printf("pixel_ratio: %g\nmap_device_size: %dx%d\n", window.mapImage().devicePixelRatio(), device.width(),
                device.height());
    printFigures("", atRatio);
    // The same window on a screen of one device pixel to a logical one, for comparison.
    QScreen* plain = screenOfRatio(1);
    if (ratio != 1 && plain) {
        window.move(plain->availableGeometry().topLeft());
        printFigures("ratio1_", measure(window, seconds));
    }
    return 0;
}

} // namespace plotwell::bench
