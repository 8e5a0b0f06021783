#include "tools/drawingtools.h"

#include "document/ansitext.h"
#include "editor/drawlines.h"
#include "editor/edits.h"
#include "editor/editor.h"
#include "tools/recordtext.h"
#include "view/viewkeys.h"
#include "view/zoom.h"

namespace plotwell {
namespace {

// New records go to the active layer: layer 0 asks for it.
void appendLine(Editor& editor, const MapPoint& a, const MapPoint& b)
{
    std::int16_t layer = 0;
    // The text holds every field and valid colour bytes, so it always converts.
    editor.doc.addLine(lineRecordText(a, b, editor.view.currentZ, editor.palette.activeColor), layer,
                       editor.view.currentScale);
}

} // namespace

void LineTool::press(Editor& editor, SurfacePoint p)
{
    m_inProgress = !m_inProgress;
    if (m_inProgress) {
        m_start = p; // the first click only starts the chain
        return;
    }
    const AppendMark mark = appendMark(editor.doc);
    appendLine(editor, toWorld(editor.view, m_start), toWorld(editor.view, p));
    editor.history.recordAppended(mark, QStringLiteral("Line"));
    drawLines(editor);
    m_start = p;
    m_inProgress = true;
}

void LineTool::move(Editor& editor, int buttons, SurfacePoint p)
{
    if (buttons != 0 || !m_inProgress)
        return;
    // The band is drawn over a fresh frame in whatever colour the frame left
    // the pen, and the frame is held so that the render loop keeps it.
    DrawingSurface& surface = editor.services.surface;
    surface.clear();
    drawLines(editor);
    surface.line(m_start.x, m_start.y, p.x, p.y);
    surface.refresh();
    editor.holdDrawing = true;
}

void LineTool::key(Editor&, int keyCode, int)
{
    if (keyCode == Key::Escape)
        m_inProgress = false;
}

void FreehandTool::move(Editor& editor, int buttons, SurfacePoint p)
{
    if (buttons != kLeftButton)
        return;
    const MapPoint here = toWorld(editor.view, p);
    // A point with x or y exactly 0 counts as no point: no line starts there.
    if (m_last.x != 0 && m_last.y != 0) {
        if (pointDistance(m_last, here) < kMinStep)
            return;
        // The lines of one stroke, from press to release, are one step.
        const AppendMark mark = appendMark(editor.doc);
        appendLine(editor, m_last, here);
        editor.history.recordAppended(mark, QStringLiteral("Freehand"), EditHistory::Gesture::Continues);
    }
    m_last = here;
}

void FreehandTool::release(Editor& editor)
{
    m_last = MapPoint();
    editor.history.endGesture();
}

void LabelTool::press(Editor&, SurfacePoint p)
{
    m_box.left = p.x;
    m_box.top = p.y;
    m_box.visible = true;
    ++m_box.opened;
}

QString LabelTool::firstLine(const QString& text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('\r') || text.at(i) == QLatin1Char('\n'))
            return text.left(i);
    }
    return text;
}

void LabelTool::commitCaption(Editor& editor, const QString& typed)
{
    // Anchored where the box was opened.
    const MapPoint at = toWorld(editor.view, m_box.left, m_box.top);
    m_box.visible = false;
    const QString text = firstLine(typed);
    if (text.isEmpty() || text.toLower() == newLabelText().toLower())
        return;
    // Characters the map file's code page cannot hold become "?".
    const std::string bytes = toLabelText(toAnsi(text));
    std::int16_t layer = 0;
    const AppendMark mark = appendMark(editor.doc);
    editor.doc.addLabel(labelRecordText(at, editor.view.currentZ, editor.palette.activeColor, bytes), layer,
                        editor.view.currentScale);
    editor.history.recordAppended(mark, QStringLiteral("Label"));
}

} // namespace plotwell
