#include "editor/maploading.h"

#include "editor/editor.h"
#include "editor/edits.h"
#include "editor/layercommands.h"
#include "editor/mapsaving.h"
#include "editor/viewcommands.h"
#include "view/zoom.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace plotwell {
namespace {

const QString kSettings = QStringLiteral("settings");
const QString kMapFolderKey = QStringLiteral("previousMapFolder");
const QString kLoadStep = QStringLiteral("Load");

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
    MapDocument& doc = editor.doc;
    LayerHome& home = doc.homes[std::size_t(layer)];
    // What the layer was, should the user cancel a long load.
    const LayerHome homeBefore = home;
    const std::size_t linesBefore = doc.lineCount();
    const std::size_t labelsBefore = doc.labelCount();

    home.layerFile = path;
    home.caption = fileNameOf(path);
    editor.services.settings.save(kSettings, kMapFolderKey, folderOf(path));
    FileStamp stamp = FileStamp::of(path);

    Progress& progress = editor.services.progress;
    progress.begin(QStringLiteral("Loading %1").arg(fileNameOf(path)));
    const ReadResult result =
        readMapFile(path, doc, layer, editor.view.currentScale,
                    [&progress](qint64 done, qint64 total) { return progress.advance(done, total); });
    progress.end();
    if (result.cancelled) {
        // The read only appended: dropping what it added leaves the layer as it was.
        doc.keepFirst(linesBefore, labelsBefore);
        home = homeBefore;
        return result;
    }
    // Where the read stopped guards the rest of the file against the next save.
    stamp.noteRead(result);
    home.stamp = stamp;
    // A file that cannot be opened or a record that cannot be converted ends
    // the load here, silently.
    if (!result.complete())
        return result;

    reapplyZoomScale(editor.view, editor.doc);
    if (layer == 0)
        fitContentToScreen(editor);
    return result;
}

void clearLayer(LayerStep& step, std::int16_t layer)
{
    step.editor().doc.homes[layer].caption = defaultLayerName(layer);
    step.takeLayers(1u << layer);
}

void loadLayerFromMenu(Editor& editor, std::int16_t layer)
{
    // Clearing and loading are one step, even when the dialog is cancelled
    // and the layer is only cleared.
    LayerStep step(editor);
    clearLayer(step, layer);
    FileDialog& dialog = editor.services.fileDialog;
    dialog.initialFolder = editor.services.settings.get(kSettings, kMapFolderKey, QStringLiteral("."));
    dialog.filter = QStringLiteral("Text files (*.txt)|*.txt|All Files(*.*)|*.*");
    if (!dialog.showOpen()) {
        step.push(kLoadStep);
        return;
    }
    const ReadResult result = openMapFile(editor, QDir::toNativeSeparators(dialog.fileName), layer);
    // A layer read whole from its file holds nothing unsaved.
    step.push(kLoadStep, result.complete() ? 1u << layer : 0);
    if (!result.complete())
        return; // the load ended on an error or a cancel, before the last step
    setActiveLayer(editor, layer);
}

namespace {

// How many of the name's letters have the case they have in the model; the
// names compared are equal but for case.
int caseMatches(const QString& name, const QString& model)
{
    int same = 0;
    for (int i = 0; i < name.size() && i < model.size(); ++i)
        same += name.at(i) == model.at(i);
    return same;
}

} // namespace

std::optional<std::array<QString, kLayerCount>> zoneFiles(const QString& basePath)
{
    const QFileInfo base(basePath);
    // A sibling itself is no base: zone_1.txt does not bring zone_1_1.txt.
    static const QRegularExpression sibling(QStringLiteral("_[1-3]$"));
    if (!base.isFile() || base.completeBaseName().contains(sibling))
        return std::nullopt;
    std::array<QString, kLayerCount> files{basePath};
    bool any = false;
    const QString suffix = base.suffix().isEmpty() ? QString() : QLatin1Char('.') + base.suffix();
    // The game finds a zone's files whatever the case of their names
    // (Trakanon_1.txt beside trakanon.txt); where two names differ only in
    // case, the one cased like the base wins.
    const QStringList entries = base.dir().entryList(QDir::Files, QDir::Name);
    for (int n = 1; n < kLayerCount; ++n) {
        const QString wanted = base.completeBaseName() + QStringLiteral("_%1").arg(n) + suffix;
        QString best;
        for (const QString& entry : entries) {
            if (entry.compare(wanted, Qt::CaseInsensitive) == 0
                && (best.isEmpty() || caseMatches(entry, wanted) > caseMatches(best, wanted)))
                best = entry;
        }
        if (!best.isEmpty()) {
            files[std::size_t(n)] = QDir::toNativeSeparators(base.dir().filePath(best));
            any = true;
        }
    }
    if (!any)
        return std::nullopt;
    return files;
}

void dropFiles(Editor& editor, const QStringList& paths)
{
    // The files of one drop are one step. A layer that was empty and read
    // whole from its file holds nothing unsaved.
    LayerStep step(editor);
    unsigned saved = 0;
    const auto load = [&](const QString& path, std::int16_t layer) {
        const bool empty = !layerHasRecords(editor.doc, layer);
        if (openMapFile(editor, QDir::toNativeSeparators(path), layer).complete() && empty)
            saved |= 1u << layer;
        else
            saved &= ~(1u << layer);
    };
    const bool noFiles = std::all_of(editor.doc.homes.begin(), editor.doc.homes.end(),
                                     [](const LayerHome& home) { return home.layerFile.isEmpty(); });
    if (paths.size() == 1 && noFiles) {
        if (const auto zone = zoneFiles(paths.front())) {
            for (std::int16_t n = 0; n < kLayerCount; ++n)
                if (!(*zone)[std::size_t(n)].isEmpty())
                    load((*zone)[std::size_t(n)], n);
            step.push(kLoadStep, saved);
            return;
        }
    }
    std::int16_t target = 2;
    for (const QString& path : paths) {
        for (std::int16_t n = 0; n < kLayerCount; ++n) {
            if (editor.doc.homes[n].layerFile.isEmpty()) {
                target = n;
                break;
            }
        }
        // A file that stops early keeps what it read; the others still load.
        load(path, target);
    }
    step.push(kLoadStep, saved);
}

} // namespace plotwell
