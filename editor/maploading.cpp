#include "editor/maploading.h"

#include "editor/editor.h"
#include "editor/layercommands.h"
#include "editor/viewcommands.h"
#include "view/zoom.h"

#include <QDir>

namespace plotwell {
namespace {

const QString kSettings = QStringLiteral("settings");
const QString kMapFolderKey = QStringLiteral("previousMapFolder");

} // namespace

QString folderOf(const QString& path)
{
    const int at = path.lastIndexOf(QDir::separator());
    return at < 0 ? QString() : path.left(at + 1);
}

QString fileNameOf(const QString& path)
{
    const int at = path.lastIndexOf(QDir::separator());
    return at < 0 ? QString() : path.mid(at + 1);
}

ReadResult openMapFile(Editor& editor, const QString& path, std::int16_t layer)
{
    if (editor.doc.activeLayer != layer)
        setActiveLayer(editor, layer);
    editor.doc.layerFile[layer] = path;
    editor.layers.captions[layer] = fileNameOf(path);
    editor.services.settings.save(kSettings, kMapFolderKey, folderOf(path));

    const ReadResult result = readMapFile(path, editor.doc, layer, editor.view.currentScale);
    // A file that cannot be opened or a record that cannot be converted ends
    // the load here, silently.
    if (!result.opened || result.stoppedAtLine != 0)
        return result;

    reapplyZoomScale(editor.view, editor.doc);
    if (layer == 0)
        fitContentToScreen(editor);
    return result;
}

void clearLayer(Editor& editor, std::int16_t layer)
{
    editor.layers.captions[layer] = defaultLayerName(layer);
    editor.doc.removeRecordsWhere([layer](std::int16_t recordLayer, bool) { return recordLayer == layer; });
}

void loadLayerFromMenu(Editor& editor, std::int16_t layer)
{
    clearLayer(editor, layer);
    FileDialog& dialog = editor.services.fileDialog;
    dialog.initialFolder = editor.services.settings.get(kSettings, kMapFolderKey, QStringLiteral("."));
    dialog.filter = QStringLiteral("Text files (*.txt)|*.txt|All Files(*.*)|*.*");
    if (!dialog.showOpen())
        return;
    const ReadResult result = openMapFile(editor, QDir::toNativeSeparators(dialog.fileName), layer);
    if (!result.opened || result.stoppedAtLine != 0)
        return; // the load ended on an error, before the last step
    setActiveLayer(editor, layer);
}

void dropFiles(Editor& editor, const QStringList& paths)
{
    std::int16_t target = 2;
    for (const QString& path : paths) {
        for (std::int16_t n = 0; n < kLayerCount; ++n) {
            if (editor.doc.layerFile[n].isEmpty()) {
                target = n;
                break;
            }
        }
        // A file that stops early keeps what it read; the others still load.
        openMapFile(editor, QDir::toNativeSeparators(path), target);
    }
}

} // namespace plotwell
