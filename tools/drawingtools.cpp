#include "tools/drawingtools.h"

#include "document/ansitext.h"
#include "tools/movetool.h"
#include "tools/recordtext.h"
#include "tools/snapping.h"
#include "view/viewkeys.h"
#include "view/zoom.h"

namespace plotwell {
namespace {

// New records go to the active layer: layer 0 asks for it.
void appendLine(const ToolContext& context, const MapPoint& a, const MapPoint& b)
{
    std::int16_t layer = 0;
    // The text holds every field and valid colour bytes, so it always converts.
    context.doc.addLine(lineRecordText(a, b, context.view.currentZ, context.activeColor), layer,
                        context.view.currentScale);
}

// With each end at its own height: a snapped end keeps the height of the end
// it was snapped to.
void appendLineBetween(const ToolContext& context, const MapPoint& a, const MapPoint& b)
{
    std::int16_t layer = 0;
    context.doc.addLine(lineRecordText(a, b, context.activeColor), layer, context.view.currentScale);
}

// The point a click of a drawing tool lays down at p when snapping is on.
MapPoint snappedPoint(const ToolContext& context, SurfacePoint p)
{
    TakenPoint taken = takePoint(context, p);
    if (!taken.snapped)
        taken.world.z = context.view.currentZ;
    return taken.world;
}

} // namespace

void LineTool::press(const ToolContext& context, SurfacePoint p)
{
    std::optional<MapPoint> end;
    if (context.state.snapToEnds) {
        const TakenPoint taken = takePoint(context, p);
        if (taken.snapped) {
            end = taken.world;
            p = surfacePointOf(context.view, taken.world);
        }
    }
    m_inProgress = !m_inProgress;
    if (m_inProgress) {
        m_start = p; // the first click only starts the chain
        m_startEnd = end;
        return;
    }
    const AppendMark mark = appendMark(context.doc);
    if (context.state.snapToEnds) {
        MapPoint a = m_startEnd ? *m_startEnd : toWorld(context.view, m_start);
        MapPoint b = end ? *end : toWorld(context.view, p);
        if (!m_startEnd)
            a.z = context.view.currentZ;
        if (!end)
            b.z = context.view.currentZ;
        appendLineBetween(context, a, b);
    } else {
        appendLine(context, toWorld(context.view, m_start), toWorld(context.view, p));
    }
    context.history.recordAppended(mark, QStringLiteral("Line"));
    context.drawFrame();
    m_start = p;
    m_startEnd = end;
    m_inProgress = true;
}

void LineTool::move(const ToolContext& context, int buttons, SurfacePoint p)
{
    if (buttons != 0 || !m_inProgress)
        return;
    // The band is drawn over a fresh frame in whatever colour the frame left
    // the pen, and the frame is held so that the render loop keeps it.
    DrawingSurface& surface = context.surface;
    surface.clear();
    context.drawFrame();
    if (context.state.marks.ringShown)
        p = surfacePointOf(context.view, context.state.marks.ring);
    surface.line(m_start.x, m_start.y, p.x, p.y);
    surface.refresh();
    context.state.holdDrawing = true;
}

void LineTool::key(const ToolContext&, int keyCode, int)
{
    if (keyCode == Key::Escape)
        m_inProgress = false;
}

void FreehandTool::move(const ToolContext& context, int buttons, SurfacePoint p)
{
    if (buttons != kLeftButton)
        return;
    const bool snapping = context.state.snapToEnds;
    const MapPoint here = snapping ? snappedPoint(context, p) : toWorld(context.view, p);
    // A point with x or y exactly 0 counts as no point: no line starts there.
    if (m_last.x != 0 && m_last.y != 0) {
        if (pointDistance(m_last, here) < kMinStep)
            return;
        // The lines of one stroke, from press to release, are one step.
        const AppendMark mark = appendMark(context.doc);
        if (snapping)
            appendLineBetween(context, m_last, here);
        else
            appendLine(context, m_last, here);
        context.history.recordAppended(mark, QStringLiteral("Freehand"), EditHistory::Gesture::Continues);
    }
    m_last = here;
}

void FreehandTool::release(const ToolContext& context)
{
    m_last = MapPoint();
    context.history.endGesture();
}

void LabelTool::press(const ToolContext&, SurfacePoint p)
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

void LabelTool::commitCaption(const ToolContext& context, const QString& typed)
{
    // Anchored where the box was opened.
    const MapPoint at = toWorld(context.view, m_box.left, m_box.top);
    m_box.visible = false;
    const QString text = firstLine(typed);
    if (text.isEmpty() || text.toLower() == newLabelText().toLower())
        return;
    // Characters the map file's code page cannot hold become "?".
    const std::string bytes = toLabelText(toAnsi(text));
    std::int16_t layer = 0;
    const AppendMark mark = appendMark(context.doc);
    context.doc.addLabel(labelRecordText(at, context.view.currentZ, context.activeColor, bytes), layer,
                         context.view.currentScale);
    context.history.recordAppended(mark, QStringLiteral("Label"));
}

} // namespace plotwell
