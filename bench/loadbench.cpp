#include "bench/benches.h"
#include "bench/mapgen.h"
#include "document/mapdocument.h"
#include "document/mapreader.h"
#include "platform/memoryhint.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace plotwell::bench {
namespace {

// Converts every number of the records in [p, end), which holds whole lines
// of generated map text, with std::from_chars; returns their sum.
double parseRecords(const char* p, const char* const end, std::size_t& numbers)
{
    double sum = 0;
    const auto skipSeparators = [&] {
        while (p < end && (*p == ' ' || *p == ','))
            ++p;
    };
    while (p < end) {
        const bool isLine = *p == 'L';
        p += 2;
        // L: six coordinates, three colours; P: three coordinates, three colours, the size.
        const int coordinates = isLine ? 6 : 3;
        const int wholes = isLine ? 3 : 4;
        for (int i = 0; i < coordinates; ++i) {
            skipSeparators();
            float v = 0;
            p = std::from_chars(p, end, v).ptr;
            sum += double(v);
        }
        for (int i = 0; i < wholes; ++i) {
            skipSeparators();
            int v = 0;
            p = std::from_chars(p, end, v).ptr;
            sum += v;
        }
        numbers += std::size_t(coordinates + wholes);
        const void* lineEnd = std::memchr(p, '\n', std::size_t(end - p));
        p = lineEnd ? static_cast<const char*>(lineEnd) + 1 : end;
    }
    return sum;
}

// The least a load can cost: read the file in the reader's chunks and convert
// every number of every record with std::from_chars, keeping nothing. The sum
// keeps the compiler from dropping the conversions.
double parseFloor(const QString& path, std::size_t& numbers)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    std::vector<char> buffer(64 * 1024);
    std::size_t filled = 0;
    double sum = 0;
    numbers = 0;
    for (;;) {
        if (filled == buffer.size())
            buffer.resize(buffer.size() * 2);
        const qint64 got = file.read(buffer.data() + filled, qint64(buffer.size() - filled));
        if (got <= 0)
            break; // generated text ends with a line end
        filled += std::size_t(got);
        // Whole lines only; the rest waits for the next read.
        std::size_t whole = filled;
        while (whole > 0 && buffer[whole - 1] != '\n')
            --whole;
        sum += parseRecords(buffer.data(), buffer.data() + whole, numbers);
        std::memmove(buffer.data(), buffer.data() + whole, filled - whole);
        filled -= whole;
    }
    return sum;
}

struct LoadRun {
    double seconds = 0;
    std::size_t records = 0;
    std::size_t residentGrowth = 0;
};

LoadRun timeLoad(const QString& path)
{
    LoadRun run;
    MapDocument doc;
    doc.setFillAdvice(adviseLargeFill); // as the editor's document has
    resetPeakResident();
    const std::size_t before = residentBytes();
    QElapsedTimer timer;
    timer.start();
    const ReadResult result = readMapFile(path, doc, 1, 1);
    run.seconds = double(timer.nsecsElapsed()) / 1e9;
    const std::size_t peak = peakResidentBytes();
    run.records = result.linesAdded + result.labelsAdded;
    run.residentGrowth = peak > before ? peak - before : 0;
    if (result.stoppedAtLine != 0 || !result.opened)
        std::fprintf(stderr, "load stopped at line %zu: %s\n", result.stoppedAtLine, result.reason.c_str());
    return run;
}

} // namespace

int runLoadBench(const QStringList& args)
{
    const auto lines = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 1000000)));
    const auto labels = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--labels"), 0)));
    const int runs = int(std::max(1LL, argValue(args, QStringLiteral("--runs"), 3)));

    QTemporaryDir dir;
    if (!dir.isValid())
        return 1;
    const QString path = dir.filePath(QStringLiteral("bench.txt"));
    const std::size_t bytes = writeMapFile(path, lines, labels);
    if (bytes == 0 && lines + labels > 0)
        return 1;

    // Loads and floors take turns, so that both see the same load on a
    // machine shared with other work; the best of each counts. The first load
    // also gives the memory figure: later ones could reuse memory that the
    // earlier ones gave back to the allocator.
    const LoadRun first = timeLoad(path);
    double best = first.seconds;
    double floorBest = 0;
    std::size_t numbers = 0;
    double checksum = 0;
    for (int i = 0; i < runs; ++i) {
        if (i > 0)
            best = std::min(best, timeLoad(path).seconds);
        QElapsedTimer timer;
        timer.start();
        checksum += parseFloor(path, numbers);
        const double s = double(timer.nsecsElapsed()) / 1e9;
        floorBest = i == 0 ? s : std::min(floorBest, s);
    }

    const double records = double(first.records);
    std::printf("lines: %zu\n", lines);
    std::printf("labels: %zu\n", labels);
    std::printf("file_bytes: %zu\n", bytes);
    std::printf("records_loaded: %zu\n", first.records);
    std::printf("load_s: %.4f\n", best);
    std::printf("first_load_s: %.4f\n", first.seconds);
    std::printf("records_per_s: %.0f\n", best > 0 ? records / best : 0.0);
    std::printf("mb_per_s: %.1f\n", best > 0 ? double(bytes) / 1e6 / best : 0.0);
    // Peak resident memory during the first load, less the resident size just
    // before it, per record loaded: what the records and the reader's buffers
    // cost, with the allocator's slack.
    std::printf("bytes_per_line: %.1f\n", records > 0 ? double(first.residentGrowth) / records : 0.0);
    std::printf("parse_floor_s: %.4f\n", floorBest);
    std::printf("load_over_floor: %.2f\n", floorBest > 0 ? best / floorBest : 0.0);
    std::printf("numbers_parsed: %zu\n", numbers);
    std::fprintf(stderr, "checksum %g\n", checksum);
    return first.records == lines + labels ? 0 : 1;
}

} // namespace plotwell::bench
