#include "editor/mapevents.h"

#include "editor/editor.h"
#include "view/zoom.h"

namespace plotwell {

void mapMouseDown(Editor& editor, int button, SurfacePoint p)
{
    const ToolContext context = editor.toolContext();
    editor.tools.press(context, button, p);
}

void mapMouseMove(Editor& editor, int buttons, SurfacePoint p)
{
    const ToolContext context = editor.toolContext();
    editor.tools.move(context, buttons, p);
}

void mapMouseUp(Editor& editor)
{
    const ToolContext context = editor.toolContext();
    editor.tools.release(context);
}

void mapDoubleClick(Editor& editor, int button, SurfacePoint p)
{
    if (button != kLeftButton)
        return;
    const ToolContext context = editor.toolContext();
    editor.tools.doubleClick(context, p);
}

void toolIconClicked(Editor& editor, ToolId tool)
{
    const ToolContext context = editor.toolContext();
    editor.tools.choose(context, tool);
}

void captionEntered(Editor& editor, const QString& text)
{
    const ToolContext context = editor.toolContext();
    editor.tools.label().commitCaption(context, text);
}

void captionCancelled(Editor& editor)
{
    editor.tools.label().cancelCaption();
}

} // namespace plotwell
