#include "bench/benches.h"
#include "bench/mapgen.h"

#include "document/mapreader.h"
#include "tools/selection.h"
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

double ms(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

struct WorldBox {
    float minX, minY, maxX, maxY;
};

WorldBox boxOf(const MapDocument& doc)
{
    WorldBox b{1e30f, 1e30f, -1e30f, -1e30f};
    for (const MapLine& l : doc.lines()) {
        for (const MapPoint* p : {&l.p1, &l.p2}) {
            b.minX = std::min(b.minX, p->x), b.maxX = std::max(b.maxX, p->x);
            b.minY = std::min(b.minY, p->y), b.maxY = std::max(b.maxY, p->y);
        }
    }
    return b;
}

// The least a hit test that looks at every line can cost: one pass over the
// same records comparing each line's box, widened by the tolerance, with the point.
std::size_t scanFloor(const MapDocument& doc, float x, float y)
{
    std::size_t near = 0;
    const float t = kHitTolerance;
    for (const MapLine& l : doc.lines()) {
        const float x0 = std::min(l.p1.x, l.p2.x) - t, x1 = std::max(l.p1.x, l.p2.x) + t;
        const float y0 = std::min(l.p1.y, l.p2.y) - t, y1 = std::max(l.p1.y, l.p2.y) + t;
        near += (x >= x0) & (x <= x1) & (y >= y0) & (y <= y1);
    }
    return near;
}

} // namespace

int runHitTestBench(const QStringList& args)
{
    const auto lineCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 1000000)));
    const auto labelCount = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--labels"), 10000)));
    const int points = int(std::max(1LL, argValue(args, QStringLiteral("--points"), 2000)));

    MapDocument doc;
    {
        QByteArray text = QByteArray::fromStdString(generateMapText(lineCount, labelCount));
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        readMapRecords(buffer, doc, 0, 1);
    }
    if (doc.lineCount() == 0) {
        std::fprintf(stderr, "hittest: needs --lines above 0\n");
        return 2;
    }
    // Scale 1 and no offset: surface twips are world units.
    const View view;
    const DisplayOptions display;
    Selection selection;
    const WorldBox world = boxOf(doc);
    std::mt19937 rng(5);
    std::uniform_real_distribution<float> px(world.minX, world.maxX), py(world.minY, world.maxY);
    std::vector<std::pair<float, float>> at(static_cast<std::size_t>(points));
    for (auto& p : at)
        p = {px(rng), py(rng)};

    QElapsedTimer timer;
    timer.start();
    selection.hitTestAt(doc, view, display, at[0].first, at[0].second, 0, true); // builds the index
    const double firstMs = ms(timer);

    std::size_t hits = 0;
    timer.start();
    for (const auto& p : at)
        hits += selection.hitTestAt(doc, view, display, p.first, p.second, 0, true) ? 1 : 0;
    const double hitMs = ms(timer) / double(points);

    // A quarter of the map: half its width and half its height, in the middle.
    const float w = world.maxX - world.minX, h = world.maxY - world.minY;
    selection.box = {true, world.minX + w / 4, world.minY + h / 4, w / 2, h / 2, {}};
    constexpr int kBoxRuns = 10;
    timer.start();
    for (int i = 0; i < kBoxRuns; ++i)
        selection.selectInBox(doc, view, display);
    const double boxMs = ms(timer) / kBoxRuns;

    const int floorPoints = std::min(points, 200);
    std::size_t near = 0;
    timer.start();
    for (int i = 0; i < floorPoints; ++i)
        near += scanFloor(doc, at[std::size_t(i)].first, at[std::size_t(i)].second);
    const double floorMs = ms(timer) / floorPoints;

    std::size_t selected = 0;
    for (const MapLine& l : doc.lines())
        selected += l.selected ? 1 : 0;
    std::printf("lines: %zu\nlabels: %zu\npoints: %d\npoints_hitting: %zu\n", doc.lineCount(), doc.labelCount(), points,
                hits);
    std::printf("first_hittest_ms: %.2f\nhittest_ms: %.4f\nselectbox_ms: %.2f\nlines_selected: %zu\n", firstMs, hitMs,
                boxMs, selected);
    std::printf("scan_floor_ms: %.3f\nscan_floor_near: %zu\n", floorMs, near);
    return 0;
}

} // namespace plotwell::bench
