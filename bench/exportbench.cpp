#include "bench/benches.h"
#include "bench/mapgen.h"

#include "document/mapreader.h"
#include "render/picturefile.h"
#include "render/pictureframe.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

namespace plotwell::bench {
namespace {

constexpr int kRuns = 3;

// The best of a few exports, in seconds, and the file's size; a negative
// time when the picture could not be written.
std::pair<double, qint64> bestExport(const QString& path, PictureFormat format, const PictureFrame& frame,
                                     const FrameSource& map)
{
    double best = 1e30;
    for (int run = 0; run < kRuns; ++run) {
        QElapsedTimer timer;
        timer.start();
        const QString error = writePicture(path, format, frame, map, kWhite);
        if (!error.isEmpty()) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(error));
            return {-1, 0};
        }
        best = std::min(best, double(timer.nsecsElapsed()) / 1e9);
    }
    return {best, QFileInfo(path).size()};
}

} // namespace

int runExportBench(const QStringList& args)
{
    const auto lines = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--lines"), 10000)));
    const auto labels = std::size_t(std::max(0LL, argValue(args, QStringLiteral("--labels"), 500)));
    const auto side = int(std::clamp(argValue(args, QStringLiteral("--side"), 2048), 1LL, 32768LL));

    MapDocument doc;
    QByteArray text = QByteArray::fromStdString(generateMapText(lines, labels));
    QBuffer buffer(&text);
    buffer.open(QIODevice::ReadOnly);
    readMapRecords(buffer, doc, 0, 1);

    // The whole map fitted into a square picture, as the editor's default.
    const View view;
    DisplayOptions display;
    display.layerChecked = {true, true, true, true};
    const UnderlayState underlay;
    const FrameSource map{doc, view, display, underlay};
    PictureOptions options;
    options.size = QSize(side, side);
    QElapsedTimer timer;
    timer.start();
    const PictureFrame frame = pictureFrame(options, map);
    const double fit = double(timer.nsecsElapsed()) / 1e9;
    if (!frame.error.isEmpty()) {
        std::fprintf(stderr, "%s\n", qPrintable(frame.error));
        return 1;
    }

    QTemporaryDir dir;
    const auto [png, pngBytes] = bestExport(dir.filePath(QStringLiteral("map.png")), PictureFormat::Png, frame, map);
    const auto [svg, svgBytes] = bestExport(dir.filePath(QStringLiteral("map.svg")), PictureFormat::Svg, frame, map);
    if (png < 0 || svg < 0)
        return 1;
    std::printf("lines: %zu\n", doc.lineCount());
    std::printf("labels: %zu\n", doc.labelCount());
    std::printf("size: %dx%d\n", side, side);
    std::printf("fit_s: %.4f\n", fit);
    std::printf("png_s: %.4f\n", png);
    std::printf("png_bytes: %lld\n", qint64(pngBytes));
    std::printf("svg_s: %.4f\n", svg);
    std::printf("svg_bytes: %lld\n", qint64(svgBytes));
    return 0;
}

} // namespace plotwell::bench
