#include "bench/benches.h"
#include "bench/mapgen.h"

#include "document/mapreader.h"
#include "tools/snapping.h"
#include "view/displayoptions.h"
#include "view/view.h"

#include <QBuffer>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <random>
#include <vector>

namespace plotwell::bench {
namespace {

struct Times {
    double medianMs = 0;
    double worstMs = 0;
    std::size_t snapped = 0;
};

// The nearest end at each pointer position, one search a position as a
// pointer move makes it.
Times timeSnaps(const MapDocument& doc, LineIndex& index, const View& view, const DisplayOptions& display,
                const std::vector<SurfacePoint>& at)
{
    Times t;
    std::vector<double> ms;
    ms.reserve(at.size());
    QElapsedTimer timer;
    for (const SurfacePoint& p : at) {
        timer.start();
        t.snapped += nearestLineEnd(doc, index, view, display, p).has_value() ? 1 : 0;
        ms.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    t.medianMs = ms[ms.size() / 2];
    t.worstMs = ms.back();
    return t;
}

} // namespace

int runSnapBench(const QStringList& args)
{
    const auto lineCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 1000000)));
    const int points = int(std::max(1LL, argValue(args, QStringLiteral("--points"), 5000)));

    MapDocument doc;
    {
        QByteArray text = QByteArray::fromStdString(generateMapText(lineCount, 0));
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        readMapRecords(buffer, doc, 0, 1);
    }
    if (doc.lineCount() == 0) {
        std::fprintf(stderr, "snap: needs --lines above 0\n");
        return 2;
    }
    float minX = 1e30f, minY = 1e30f, maxX = -1e30f, maxY = -1e30f;
    for (const MapLine& l : doc.lines()) {
        for (const MapPoint* p : {&l.p1, &l.p2}) {
            minX = std::min(minX, p->x), maxX = std::max(maxX, p->x);
            minY = std::min(minY, p->y), maxY = std::max(maxY, p->y);
        }
    }
    const DisplayOptions display;
    LineIndex index;

    // Scale 1, the view at the map's corner: pointer positions anywhere over the map.
    View view;
    view.offsetX = -minX;
    view.offsetY = -minY;
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> px(0, maxX - minX), py(0, maxY - minY);
    std::vector<SurfacePoint> at(static_cast<std::size_t>(points));
    for (auto& p : at)
        p = {px(rng), py(rng)};

    QElapsedTimer timer;
    timer.start();
    nearestLineEnd(doc, index, view, display, at[0]); // builds the grid
    const double firstMs = double(timer.nsecsElapsed()) / 1e6;
    const Times near = timeSnaps(doc, index, view, display, at);

    // The whole map fitted into 1000 pixels: the 8 pixels cover far more of it.
    View fitted;
    fitted.currentScale = 15000 / std::max(maxX - minX, maxY - minY);
    fitted.offsetX = -minX * fitted.currentScale;
    fitted.offsetY = -minY * fitted.currentScale;
    std::uniform_real_distribution<float> fx(0, 15000), fy(0, 15000);
    for (auto& p : at)
        p = {fx(rng), fy(rng)};
    const Times far = timeSnaps(doc, index, fitted, display, at);

    std::printf("lines: %zu\npoints: %d\nfirst_snap_ms: %.2f\n", doc.lineCount(), points, firstMs);
    std::printf("snap_ms: %.5f\nsnap_worst_ms: %.4f\npoints_snapped: %zu\n", near.medianMs, near.worstMs, near.snapped);
    std::printf("fitted_scale: %.5f\nfitted_snap_ms: %.5f\nfitted_snap_worst_ms: %.4f\nfitted_points_snapped: %zu\n",
                double(fitted.currentScale), far.medianMs, far.worstMs, far.snapped);
    return 0;
}

} // namespace plotwell::bench
