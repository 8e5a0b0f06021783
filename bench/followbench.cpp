#include "bench/benches.h"
#include "bench/mapgen.h"

#include "editor/gamelog.h"
#include "platform/filewatch.h"
#include "shell/widgets/mainwindow.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace plotwell::bench {
namespace {

constexpr qint64 kGiveUpMs = 2000;

void runFor(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// A pixel of the marker's right arm in the map's image.
bool markerShownAt(MainWindow& window, SurfacePoint centre)
{
    const QImage& image = window.mapImage();
    const float arm = (PlayerMarker::kArmFrom + PlayerMarker::kArmTo) / 2;
    const double ratio = image.devicePixelRatio();
    const QPoint pixel(int((centre.x + arm) / 15 * ratio), int(centre.y / 15 * ratio));
    return image.rect().contains(pixel) && image.pixel(pixel) == qRgb(255, 0, 255);
}

// Appends /loc answers to the log, one at a time, each at another point of
// the view, and measures how long the window's own event loop takes until
// the map shows the marker there. Milliseconds, sorted; empty on a timeout.
std::vector<double> latencies(MainWindow& window, const QString& log, int count)
{
    Editor& editor = window.editor();
    QRandomGenerator random(18);
    std::vector<double> ms;
    // Places on a grid of 8 x 8 over the map, so that no marker covers the next centre.
    const QSize pixels = window.mapImage().deviceIndependentSize().toSize();
    const int step = std::min(pixels.width(), pixels.height()) / 9;
    for (int i = 0; i < count; ++i) {
        const SurfacePoint at{float((1 + i % 8) * step) * 15, float((1 + i / 8 % 8) * step) * 15};
        const MapPoint world = toWorld(editor.view, at);
        PlayerMarker expected;
        expected.at = world;
        const SurfacePoint centre = playerMarkerCentre(editor.view, expected);
        const QByteArray line = QByteArray("[Mon Nov 23 18:00:00 2026] Your Location is ")
            + QByteArray::number(double(-world.y), 'g', 9) + ", " + QByteArray::number(double(-world.x), 'g', 9) + ", "
            + QByteArray::number(i % 50) + "\r\n";
        // The game writes at any moment, not in step with the watch's timer.
        runFor(int(random.bounded(2 * FileWatch::kPollMs)));
        QFile file(log);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
            return {};
        QElapsedTimer timer;
        timer.start();
        file.write(line);
        file.close();
        while (!markerShownAt(window, centre)) {
            if (timer.elapsed() > kGiveUpMs)
                return {};
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        ms.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    return ms;
}

} // namespace

int runFollowBench(const QStringList& args)
{
    const auto lineCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 10000)));
    const auto labelCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--labels"), 500)));
    const int count = int(std::clamp(argValue(args, QStringLiteral("--count"), 100), 1LL, 10000LL));

    QTemporaryDir dir;
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path()); // never the user's settings
    const QString map = dir.filePath(QStringLiteral("zone.txt"));
    writeMapFile(map, lineCount, labelCount);
    const QString log = dir.filePath(QStringLiteral("eqlog_Torvane_quillmere.txt"));
    QFile(log).open(QIODevice::WriteOnly);
    MainWindow window;
    window.ended = [] {};
    window.show();
    window.openFiles({map});
    runFor(300);

    Editor& editor = window.editor();
    editor.follower.useSystemWatch = true;
    followGameLog(editor, log);
    const std::vector<double> watched = latencies(window, log, count);
    editor.follower.useSystemWatch = false;
    followGameLog(editor, log);
    const std::vector<double> polled = latencies(window, log, count);
    if (watched.empty() || polled.empty()) {
        std::fprintf(stderr, "follow: the marker did not move within %lld ms of a location\n", kGiveUpMs);
        return 1;
    }
    const auto median = [](const std::vector<double>& v) { return v[v.size() / 2]; };
    std::printf("lines: %zu\nlabels: %zu\nlocations: %d\n", editor.doc.lineCount(), editor.doc.labelCount(), count);
    std::printf("watch_median_ms: %.2f\nwatch_max_ms: %.2f\ntimer_median_ms: %.2f\ntimer_max_ms: %.2f\n",
                median(watched), watched.back(), median(polled), polled.back());
    return 0;
}

} // namespace plotwell::bench
