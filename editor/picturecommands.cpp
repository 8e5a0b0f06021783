#include "editor/picturecommands.h"

#include "editor/editor.h"
#include "editor/maploading.h"
#include "platform/twips.h"
#include "render/picturefile.h"
#include "render/pictureframe.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace plotwell {
namespace {

const QString kTitle = QStringLiteral("Plotwell");

QString extensionOf(PictureFormat format)
{
    return format == PictureFormat::Png ? QStringLiteral(".png") : QStringLiteral(".svg");
}

// The base layer's file name with the picture's extension, or "map".
QString suggestedName(const Editor& editor, PictureFormat format)
{
    const QString base = QFileInfo(editor.doc.homes[0].layerFile).completeBaseName();
    return (base.isEmpty() ? QStringLiteral("map") : base) + extensionOf(format);
}

// The picture's file from the save dialog, which asks before it replaces a
// file; a name without an extension takes the chosen format's. The dialog is
// left as the map commands had it, since they share it.
std::optional<QString> askPicturePath(Editor& editor, PictureFormat format)
{
    FileDialog& dialog = editor.services.fileDialog;
    const QString folderBefore = dialog.initialFolder;
    const QString nameBefore = dialog.fileName;
    const QString filterBefore = dialog.filter;
    const QString png = QStringLiteral("PNG picture (*.png)|*.png");
    const QString svg = QStringLiteral("SVG drawing (*.svg)|*.svg");
    dialog.initialFolder = folderOf(editor.doc.homes[0].layerFile);
    dialog.fileName = suggestedName(editor, format);
    dialog.confirmOverwrite = true;
    dialog.defaultSuffix = extensionOf(format).mid(1);
    dialog.filter = (format == PictureFormat::Png ? png + QLatin1Char('|') + svg : svg + QLatin1Char('|') + png)
        + QStringLiteral("|All Files (*.*)|*.*");
    const bool chosen = dialog.showSave() && !dialog.fileName.isEmpty();
    QString path = QDir::toNativeSeparators(dialog.fileName);
    dialog.initialFolder = folderBefore;
    dialog.fileName = nameBefore;
    dialog.filter = filterBefore;
    dialog.confirmOverwrite = false;
    dialog.defaultSuffix.clear();
    if (!chosen)
        return std::nullopt;
    if (QFileInfo(path).suffix().isEmpty())
        path += extensionOf(format);
    return path;
}

} // namespace

void exportPictureFromMenu(Editor& editor)
{
    Dialogs& messages = editor.services.dialogs;
    PictureDialog& dialog = editor.services.pictureDialog;
    // Only a picture the user chose can go with the map; the program's own
    // start-up picture never does.
    const bool underlayShown = editor.underlay.underlayOn && !editor.underlay.builtIn;
    const QSize viewSize(std::max(1, px(editor.view.mapWidth)), std::max(1, px(editor.view.mapHeight)));
    if (!dialog.show(viewSize, underlayShown))
        return;
    const PictureOptions options = dialog.options;

    UnderlayState underlay = editor.underlay;
    underlay.underlayOn = underlayShown && options.underlay;
    const FrameSource map{editor.doc, editor.view, editor.display, underlay};
    // Told before a file is chosen, so that nobody picks a file for nothing.
    const PictureFrame frame = pictureFrame(options, map);
    if (!frame.error.isEmpty()) {
        messages.message(frame.error, kTitle);
        return;
    }

    const std::optional<QString> path = askPicturePath(editor, options.format);
    if (!path)
        return;
    const std::optional<PictureFormat> format = pictureFormatOf(*path);
    if (!format) {
        messages.message(QStringLiteral("Plotwell writes pictures as PNG or SVG, and the name %1 ends in neither "
                                        ".png nor .svg, so nothing was written.")
                             .arg(*path),
                         kTitle);
        return;
    }
    const QString error = writePicture(*path, *format, frame, map, editor.services.surface.backColor());
    if (!error.isEmpty())
        messages.message(QStringLiteral("The picture could not be written to %1: %2").arg(*path, error), kTitle);
}

} // namespace plotwell
