#include "bench/benches.h"
#include "bench/mapgen.h"

#include "shell/widgets/mainwindow.h"

#include <QElapsedTimer>
#include <QEventLoop>
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

} // namespace

int runIdleBench(const QStringList& args)
{
    const auto lineCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 10000)));
    const auto labelCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--labels"), 500)));
    const double seconds = double(std::max(1LL, argValue(args, QStringLiteral("--seconds"), 5)));
    const auto selectCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--select"), 0)));

    QTemporaryDir dir;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path()); // never the user's settings
    const QString map = dir.filePath(QStringLiteral("zone.txt"));
    writeMapFile(map, lineCount, labelCount);
    MainWindow window;
    window.ended = [] {};
    window.show();
    window.openFiles({map});
    // Lines spread over the whole map, flashing while the loop runs.
    MapDocument& doc = window.editor().doc;
    const std::size_t lines = doc.lineCount();
    for (std::size_t k = 0; k < std::min(selectCount, lines); ++k)
        doc.setLineSelected(k * lines / std::min(selectCount, lines), true);
    runFor(500); // the frames after the load

    // Nothing moving: the loop runs; the frames stand, or only the selection flashes.
    const std::clock_t cpuBefore = std::clock();
    QElapsedTimer wall;
    wall.start();
    runFor(int(seconds * 1000));
    const double cpu = double(std::clock() - cpuBefore) / CLOCKS_PER_SEC;
    const double idlePercent = cpu / (double(wall.nsecsElapsed()) / 1e9) * 100;

    const double fullMs = meanFrameMs(window, 20, true);
    if (!doc.hasSelection()) {
        for (std::size_t i = 0; i < doc.lineCount(); i += 100)
            doc.setLineSelected(i, true);
    }
    const double flashMs = meanFrameMs(window, 40, false);

    std::printf("lines: %zu\nlabels: %zu\nselected: %zu\nseconds: %g\n", doc.lineCount(), doc.labelCount(),
                std::min(selectCount, lines), seconds);
    std::printf("idle_cpu_percent: %.2f\nfull_frame_ms: %.2f\nflash_frame_ms: %.2f\nflash_ratio: %.2f\n", idlePercent,
                fullMs, flashMs, fullMs > 0 ? flashMs / fullMs : 0.0);
    return 0;
}

} // namespace plotwell::bench
