#include "bench/benches.h"
#include "bench/mapgen.h"

#include "document/mapdocument.h"
#include "document/mapreader.h"
#include "document/mapwriter.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <vector>

namespace plotwell::bench {
namespace {

constexpr int kRuns = 3;

double seconds(const QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e9;
}

// The least any writer could spend: the same numbers formatted by bare
// std::to_chars into one buffer, with no separators, no file and no checks.
double formatFloor(const MapDocument& doc, std::size_t& sink)
{
    std::vector<char> buffer((doc.lineCount() + doc.labelCount()) * 128 + 1);
    QElapsedTimer timer;
    timer.start();
    char* out = buffer.data();
    const auto single = [&out](float v) { out = std::to_chars(out, out + 16, v, std::chars_format::general, 7).ptr; };
    const auto whole = [&out](int v) { out = std::to_chars(out, out + 8, v).ptr; };
    for (const MapLine& l : doc.lines()) {
        single(l.p1.x), single(l.p1.y), single(l.p1.z);
        single(l.p2.x), single(l.p2.y), single(l.p2.z);
        whole(l.r), whole(l.g), whole(l.b);
    }
    for (const MapLabel& t : doc.labels()) {
        single(t.pos.x), single(t.pos.y), single(t.pos.z);
        whole(t.r), whole(t.g), whole(t.b), whole(t.size);
    }
    const double s = seconds(timer);
    sink += std::size_t(out - buffer.data()); // keeps the work from being optimised away
    return s;
}

} // namespace

int runSaveBench(const QStringList& args)
{
    const auto lines = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 1000000)));
    const auto labels = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--labels"), 0)));

    MapDocument doc;
    {
        QByteArray text = QByteArray::fromStdString(generateMapText(lines, labels));
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        const ReadResult read = readMapRecords(buffer, doc, 0, 1);
        if (read.stoppedAtLine != 0) {
            std::fprintf(stderr, "generated map stopped at line %zu: %s\n", read.stoppedAtLine, read.reason.c_str());
            return 1;
        }
    }

    QTemporaryDir dir;
    if (!dir.isValid()) {
        std::fprintf(stderr, "no temporary folder: %s\n", qPrintable(dir.errorString()));
        return 1;
    }
    const QString path = dir.filePath(QStringLiteral("layer.txt"));

    // The best of a few runs: the machine is shared, and the best run is the
    // one least disturbed by others.
    double save = 1e30;
    double floor = 1e30;
    std::size_t bytes = 0;
    std::size_t sink = 0;
    for (int run = 0; run < kRuns; ++run) {
        QElapsedTimer timer;
        timer.start();
        const WriteResult result = writeLayerFile(path, doc, 0);
        save = std::min(save, seconds(timer));
        if (!result.ok()) {
            std::fprintf(stderr, "save failed: %s\n", qPrintable(result.error));
            return 1;
        }
        bytes = result.bytes;
        floor = std::min(floor, formatFloor(doc, sink));
    }

    std::printf("lines: %zu\n", doc.lineCount());
    std::printf("labels: %zu\n", doc.labelCount());
    std::printf("bytes: %zu\n", bytes);
    std::printf("save_s: %.4f\n", save);
    std::printf("mb_per_s: %.1f\n", double(bytes) / 1e6 / save);
    std::printf("format_floor_s: %.4f\n", floor);
    std::printf("save_over_floor: %.2f\n", floor > 0 ? save / floor : 0.0);
    return sink == 0 && lines + labels > 0 ? 1 : 0;
}

} // namespace plotwell::bench
