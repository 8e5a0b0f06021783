#include "cli/mapcommands.h"
#include "cli/output.h"
#include "document/mapdocument.h"
#include "document/mapreader.h"
#include "document/numbertext.h"

#include <algorithm>
#include <array>
#include <map>

namespace plotwell::cli {
namespace {

struct Range {
    float low = 0;
    float high = 0;
    bool any = false;

    void add(float v)
    {
        low = any ? std::min(low, v) : v;
        high = any ? std::max(high, v) : v;
        any = true;
    }
    void add(const Range& other)
    {
        if (other.any) {
            add(other.low);
            add(other.high);
        }
    }
};

struct Counts {
    std::size_t lines = 0;
    std::size_t labels = 0;
};

using Colour = std::array<std::uint8_t, 3>;

// What a map pack maintainer wants to know of a map: how many records, where
// they lie (x and y, the bounding box), how high (z), and in which colours.
struct MapStats {
    Counts records;
    std::array<Range, 3> axes; // x, y, z
    std::map<Colour, Counts> colours; // in the order of red, green, blue

    void addPoint(const MapPoint& p)
    {
        axes[0].add(p.x);
        axes[1].add(p.y);
        axes[2].add(p.z);
    }
    void add(const MapDocument& doc)
    {
        for (const MapLine& line : doc.lines()) {
            addPoint(line.p1);
            addPoint(line.p2);
            ++colours[{line.r, line.g, line.b}].lines;
        }
        for (const MapLabel& label : doc.labels()) {
            addPoint(label.pos);
            ++colours[{label.r, label.g, label.b}].labels;
        }
        records.lines += doc.lineCount();
        records.labels += doc.labelCount();
    }
    void add(const MapStats& other)
    {
        records.lines += other.records.lines;
        records.labels += other.records.labels;
        for (std::size_t i = 0; i < axes.size(); ++i)
            axes[i].add(other.axes[i]);
        for (const auto& [colour, counts] : other.colours) {
            colours[colour].lines += counts.lines;
            colours[colour].labels += counts.labels;
        }
    }
};

QString numberText(float v)
{
    return QString::fromStdString(singleToText(v));
}

// The lines under a file's heading: a range only when there is a point,
// then the colours in the order of their red, green and blue values.
void printDetails(std::FILE* out, const MapStats& stats)
{
    const char* const names[] = {"x", "y", "z"};
    for (std::size_t i = 0; i < stats.axes.size(); ++i) {
        const Range& r = stats.axes[i];
        if (r.any)
            printLine(
                out,
                QStringLiteral("  %1: %2 to %3").arg(QLatin1String(names[i]), numberText(r.low), numberText(r.high)));
    }
    for (const auto& [colour, counts] : stats.colours) {
        printLine(out,
                  QStringLiteral("  colour %1,%2,%3: %4 lines, %5 labels")
                      .arg(colour[0])
                      .arg(colour[1])
                      .arg(colour[2])
                      .arg(qulonglong(counts.lines))
                      .arg(qulonglong(counts.labels)));
    }
}

} // namespace

int statsFiles(const QStringList& paths, std::FILE* out)
{
    int status = kOk;
    MapStats total;
    for (const QString& path : paths) {
        MapDocument doc;
        const auto read = readReported(path, doc, out);
        if (!read) {
            status = kFailed;
            continue;
        }
        const ReadResult& result = *read;
        if (!readCleanly(result))
            status = kFailed;
        MapStats stats;
        stats.add(doc);
        printLine(out, readSummary(path, result));
        printDetails(out, stats);
        total.add(stats);
    }
    if (paths.size() > 1) {
        printLine(out,
                  QStringLiteral("total: %1 lines, %2 labels")
                      .arg(qulonglong(total.records.lines))
                      .arg(qulonglong(total.records.labels)));
        printDetails(out, total);
    }
    std::fflush(out);
    return status;
}

} // namespace plotwell::cli
