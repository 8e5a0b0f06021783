#include "editor/mapsaving.h"

#include "document/mapwriter.h"
#include "editor/editor.h"
#include "editor/maploading.h"

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
    editor.doc.layerFile[layer] = path;
    editor.layerStamps[layer] = {}; // chosen to be written, whatever is there
    editor.layers.captions[layer] = fileNameOf(path);
    return true;
}

void saveLayer(Editor& editor, std::int16_t layer)
{
    const QString& path = editor.doc.layerFile[layer];
    FileStamp& stamp = editor.layerStamps[layer];
    if (stamp.changedOnDisk(path)) {
        // Another program's work is not overwritten unasked: the first save
        // tells, the next one replaces the file.
        stamp = FileStamp::of(path);
        editor.services.dialogs.message(
            QStringLiteral("The file %1 was changed by another program after Plotwell read it, so layer %2 was "
                           "not saved and the file was left as it is. Choose Save all layers again to replace it.")
                .arg(path)
                .arg(layer),
            kTitle);
        return;
    }
    const WriteResult result = writeLayerFile(path, editor.doc, layer);
    if (result.ok()) {
        stamp = FileStamp::of(path);
        editor.history.markSaved(layer);
        return;
    }
    editor.services.dialogs.message(
        QStringLiteral("The layer %1 could not be saved to %2: %3").arg(layer).arg(path, result.error), kTitle);
}

void saveAllLayers(Editor& editor)
{
    for (std::int16_t layer = 0; layer < kLayerCount; ++layer) {
        if (editor.doc.layerFile[layer].isEmpty()) {
            if (!layerHasRecords(editor.doc, layer) || !chooseLayerFile(editor, layer))
                continue;
        }
        // A layer that cannot be written has been reported; the others are still saved.
        saveLayer(editor, layer);
    }
}

} // namespace plotwell
