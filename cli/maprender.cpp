#include "cli/mapcommands.h"

#include "cli/output.h"
#include "document/mapdocument.h"
#include "editor/maploading.h"
#include "render/maprenderer.h"
#include "render/picturefile.h"
#include "render/pictureframe.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace plotwell::cli {
namespace {

// The layers' files: those given, or a zone's when its base file is given alone.
std::array<QString, kLayerCount> layerFiles(const QStringList& files)
{
    if (files.size() == 1) {
        if (const auto zone = zoneFiles(files.front()))
            return *zone;
    }
    std::array<QString, kLayerCount> layers;
    for (int n = 0; n < files.size() && n < kLayerCount; ++n)
        layers[std::size_t(n)] = files.at(n);
    return layers;
}

} // namespace

std::optional<QSize> parsePictureSize(const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,9})[xX]([0-9]{1,9})$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (size.width() < 1 || size.height() < 1 || size.width() > kMaxPictureSide || size.height() > kMaxPictureSide)
        return std::nullopt;
    return size;
}

int renderFiles(const QStringList& files, const QString& out, QSize size, bool labels, std::FILE* err)
{
    MapDocument doc;
    int status = kOk;
    const std::array<QString, kLayerCount> layers = layerFiles(files);
    for (std::int16_t n = 0; n < kLayerCount; ++n) {
        const QString& path = layers[std::size_t(n)];
        if (path.isEmpty())
            continue;
        // Names the layer's group in an SVG drawing, as in the editor.
        doc.homes[std::size_t(n)].layerFile = path;
        doc.homes[std::size_t(n)].caption = QFileInfo(path).fileName();
        const ReadResult read = readMapFile(path, doc, n, kScale);
        if (!read.opened) {
            printLine(err, QStringLiteral("%1: cannot be opened: %2").arg(path, read.openError));
            return kFailed;
        }
        if (read.holdsNul) {
            printLine(err, readSummary(path, read));
            printLine(err,
                      QStringLiteral("%1: not written, since %2 does not look like a map text file").arg(out, path));
            return kFailed;
        }
        // As the editor shows it: the records before the stop.
        if (read.stoppedAtLine != 0) {
            printLine(err, readSummary(path, read));
            status = kFailed;
        }
    }

    DisplayOptions display;
    display.showLabels = display.labelsChecked = labels;
    display.layerChecked = {true, true, true, true};
    const View view;
    const UnderlayState noUnderlay;
    const FrameSource map{doc, view, display, noUnderlay};
    PictureOptions options;
    options.size = size;
    const PictureFrame frame = pictureFrame(options, map);
    if (!frame.error.isEmpty()) {
        printLine(err, QStringLiteral("%1: not written: %2").arg(out, frame.error));
        return kFailed;
    }
    const QString error = writePicture(out, *pictureFormatOf(out), frame, map, kWhite);
    if (!error.isEmpty()) {
        printLine(err, QStringLiteral("%1: cannot be written: %2").arg(out, error));
        return kFailed;
    }
    return status;
}

} // namespace plotwell::cli
