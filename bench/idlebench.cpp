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

double meanFrameMs(MainWindow& window, int frames, bool dirty)
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < frames; ++i) {
        if (dirty)
            window.editor().frameDirty = true;
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

    QTemporaryDir dir;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path()); // never the user's settings
    const QString map = dir.filePath(QStringLiteral("zone.txt"));
    writeMapFile(map, lineCount, labelCount);
    MainWindow window;
    window.ended = [] {};
    window.show();
    window.openFiles({map});
    runFor(500); // the frames after the load

    // Nothing selected, nothing moving: the loop runs, the frames stand.
    const std::clock_t cpuBefore = std::clock();
    QElapsedTimer wall;
    wall.start();
    runFor(int(seconds * 1000));
    const double cpu = double(std::clock() - cpuBefore) / CLOCKS_PER_SEC;
    const double idlePercent = cpu / (double(wall.nsecsElapsed()) / 1e9) * 100;

    const double fullMs = meanFrameMs(window, 20, true);
    MapDocument& doc = window.editor().doc;
    for (std::size_t i = 0; i < doc.lineCount(); i += 100)
        doc.setLineSelected(i, true);
    const double flashMs = meanFrameMs(window, 40, false);

    std::printf("lines: %zu\nlabels: %zu\nseconds: %g\n", doc.lineCount(), doc.labelCount(), seconds);
    std::printf("idle_cpu_percent: %.2f\nfull_frame_ms: %.2f\nflash_frame_ms: %.2f\nflash_ratio: %.2f\n", idlePercent,
                fullMs, flashMs, fullMs > 0 ? flashMs / fullMs : 0.0);
    return 0;
}

} // namespace plotwell::bench
