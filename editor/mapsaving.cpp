#include "editor/mapsaving.h"

#include "document/mapreader.h"
#include "document/mapwriter.h"
#include "editor/editor.h"
#include "editor/maploading.h"
#include "platform/fileidentity.h"

#include <QDir>

#include <algorithm>

namespace plotwell {
namespace {

const QString kTitle = QStringLiteral("Plotwell");

} // namespace

bool layerHasRecords(const MapDocument& doc, std::int16_t layer)
{
    const auto inLayer = [layer](const auto& record) { return record.layer == layer; };
    return std::any_of(doc.lines().begin(), doc.lines().end(), inLayer)
        || std::any_of(doc.labels().begin(), doc.labels().end(), inLayer);
}

bool chooseLayerFile(Editor& editor, std::int16_t layer)
{
    editor.services.dialogs.message(
        QStringLiteral("The layer %1 needs to have a file defined for me to save.").arg(layer), kTitle);

    // The starting folder is left alone: the dialog opens wherever it was last pointed.
    FileDialog& dialog = editor.services.fileDialog;
    dialog.fileName.clear();
    dialog.filter = QStringLiteral("Text Files (*.txt)|*.txt|All Files (*.*)|*.*");
    if (!dialog.showSave() || dialog.fileName.isEmpty())
        return false;

    const QString path = QDir::toNativeSeparators(dialog.fileName);
    LayerHome& home = editor.doc.homes[std::size_t(layer)];
    home.layerFile = path;
    home.caption = fileNameOf(path);
    home.stamp = {}; // chosen to be written, whatever is there
    return true;
}

namespace {

// " and the line after it", " and the 163 lines after it", or nothing.
QString linesAfter(const std::optional<std::size_t>& total, std::size_t line)
{
    const std::size_t after = total && *total > line ? *total - line : 0;
    if (after == 0)
        return {};
    return after == 1 ? QStringLiteral(" and the line after it")
                      : QStringLiteral(" and the %1 lines after it").arg(after);
}

// Why saving must leave the layer's file as it is this time; empty when
// nothing would be lost. A file that another program changed since Plotwell
// read it, or that Plotwell read only in part, is not overwritten unasked:
// the first save tells, and the next one replaces the file.
QString reasonToKeep(const FileStamp& stamp, const QString& path, std::int16_t layer)
{
    const QString n = QString::number(layer);
    const QString again = QStringLiteral("Choose Save all layers again to replace it.");
    if (stamp.changedOnDisk(path))
        return QStringLiteral(
                   "The file %1 was changed by another program after Plotwell read it, so layer %2 was not "
                   "saved and the file was left as it is. %3")
            .arg(path, n, again);
    if (stamp.holdsNul)
        return QStringLiteral(
                   "The file %1 holds NUL bytes, so it is not a map text file: layer %2 was not saved and the "
                   "file was left as it is. %3")
            .arg(path, n, again);
    if (stamp.stoppedAtLine != 0) {
        const QString line = QString::number(stamp.stoppedAtLine);
        return QStringLiteral(
                   "Plotwell read the file %1 only up to line %2, which it could not read, so layer %3 was not "
                   "saved and the file was left as it is: saving it would lose line %2%4. %5")
            .arg(path, line, n, linesAfter(countTextLines(path), stamp.stoppedAtLine), again);
    }
    return {};
}

} // namespace

void saveLayer(Editor& editor, std::int16_t layer)
{
    const QString& path = editor.doc.homes[layer].layerFile;
    FileStamp& stamp = editor.doc.homes[layer].stamp;
    if (const QString why = reasonToKeep(stamp, path, layer); !why.isEmpty()) {
        stamp = FileStamp::of(path);
        editor.services.dialogs.message(why, kTitle);
        return;
    }
    const WriteResult result = writeLayerFile(path, editor.doc, layer);
    if (!result.ok()) {
        editor.services.dialogs.message(
            QStringLiteral("The layer %1 could not be saved to %2: %3").arg(layer).arg(path, result.error), kTitle);
        return;
    }
    stamp = FileStamp::of(path);
    editor.history.markSaved(layer);
    // Another layer with the same file now holds what Plotwell wrote itself,
    // which is no change by another program.
    for (std::int16_t other = 0; other < kLayerCount; ++other) {
        if (other != layer && sameFileOnDisk(editor.doc.homes[other].layerFile, path))
            editor.doc.homes[other].stamp = stamp;
    }
}

void saveAllLayers(Editor& editor)
{
    for (std::int16_t layer = 0; layer < kLayerCount; ++layer) {
        if (editor.doc.homes[layer].layerFile.isEmpty()) {
            if (!layerHasRecords(editor.doc, layer) || !chooseLayerFile(editor, layer))
                continue;
        }
        // A layer that cannot be written has been reported; the others are still saved.
        saveLayer(editor, layer);
    }
}

} // namespace plotwell
