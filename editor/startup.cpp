#include "editor/startup.h"

#include "editor/editmenu.h"
#include "editor/editor.h"
#include "editor/gamelog.h"
#include "view/viewcontrol.h"
#include "view/zoom.h"

// The built-in pictures are compiled into the core library; a static
// library's resources must be registered by name, outside any namespace.
static void registerCoreResources()
{
    Q_INIT_RESOURCE(underlay);
}

namespace plotwell {

QString versionText()
{
    return QStringLiteral("%1.%2.%3")
        .arg(PLOTWELL_VERSION_MAJOR)
        .arg(PLOTWELL_VERSION_MINOR)
        .arg(PLOTWELL_VERSION_PATCH);
}

QString windowCaption()
{
    return QStringLiteral("Plotwell v") + versionText();
}

void startUp(Editor& editor)
{
    // The Pointer tool is chosen; its icon is shown raised.
    registerCoreResources();
    // The underlay starts with the program's own picture.
    editor.underlay.picture = QImage(QStringLiteral(":/underlay/startup.png"));
    editor.underlay.builtIn = true;
    editor.underlay.underlayOn = true;
    editor.display.heightRange = 100;
    editor.view.currentScale = 1;
    editor.view.offsetX = 1000;
    editor.view.offsetY = 1000;
    editor.palette.activeColor = kBlack;
    editor.doc.activeLayer = 0; // set directly: the layer rows already show it
    editor.display.showLabels = true;
    editor.display.showLines = true;
    editor.shell.wheelHooked = true;
    // The window caption is windowCaption(), set by the window.
    reapplyZoomScale(editor.view, editor.doc);
    resetView(editor.view, editor.doc);
    loadColorPresets(editor.palette, editor.services.settings);
    loadEditSettings(editor);
    loadFollowSettings(editor);
}

void finishStartUp(Editor& editor)
{
    editor.display.flashLevel = 255;
    editor.display.flashRising = false;
}

} // namespace plotwell
