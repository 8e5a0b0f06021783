#include "editor/underlaycommands.h"

#include "editor/editor.h"
#include "editor/maploading.h"

#include <QDir>
#include <QImageReader>

namespace plotwell {
namespace {

const QString kSettings = QStringLiteral("settings");
const QString kImageFolderKey = QStringLiteral("previousImageFolder");

QImage readPicture(const QString& fileName)
{
    QImageReader reader(fileName);
    // A forged or huge picture must not take the memory of the whole
    // machine: decoding stops beyond 1 GB, as large as a 16000 x 16000 scan.
    reader.setAllocationLimit(1024);
    QImage picture;
    if (!reader.read(&picture))
        return QImage();
    return picture;
}

} // namespace

bool loadUnderlay(Editor& editor, const QString& fileName)
{
    // The folder is remembered in the system's own form, whichever separator
    // the name came with: on Windows a name with "/" has folders too.
    editor.services.settings.save(kSettings, kImageFolderKey, folderOf(QDir::toNativeSeparators(fileName)));
    QImage picture = readPicture(fileName);
    if (picture.isNull())
        return false;
    editor.underlay.picture = std::move(picture);
    editor.underlay.builtIn = false;
    editor.underlay.underlayOn = true;
    editor.drawLines();
    return true;
}

void openUnderlayFromMenu(Editor& editor)
{
    FileDialog& dialog = editor.services.fileDialog;
    dialog.initialFolder = editor.services.settings.get(kSettings, kImageFolderKey, QStringLiteral("."));
    dialog.filter = QStringLiteral(
        "JPEG Images (*.jpg)|*.jpg|GIF Images (*.gif)|*.gif|Bitmap Images "
        "(*.bmp)|*.bmp|All Files(*.*)|*.*");
    if (!dialog.showOpen())
        return;
    loadUnderlay(editor, QDir::toNativeSeparators(dialog.fileName));
}

void closeUnderlay(Editor&)
{
    // The map itself carries no picture of its own: the underlay is the
    // picture box's, and stays until another one is opened.
}

void backgroundButtonClicked(Editor& editor, int index)
{
    editor.underlay.underlayOn = index != 2;
    editor.underlay.tracingPaperOn = index == 1;
    editor.focusMap();
}

} // namespace plotwell
