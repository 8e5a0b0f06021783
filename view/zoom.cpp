#include "view/zoom.h"

#include "shell/editor.h"
#include "view/viewcontrol.h"

#include <algorithm>
#include <optional>

namespace plotwell {
namespace {

struct Bounds {
    float minX, maxX, minY, maxY;

    void take(const MapPoint& p)
    {
        if (p.x < minX)
            minX = p.x;
        if (p.x > maxX)
            maxX = p.x;
        if (p.y < minY)
            minY = p.y;
        if (p.y > maxY)
            maxY = p.y;
    }
};

// The world box of every line end and label of all layers, whether shown or
// not; none when the document is empty.
std::optional<Bounds> contentBounds(const MapDocument& doc)
{
    if (doc.lines().empty() && doc.labels().empty())
        return std::nullopt;
    const MapPoint& seed = doc.lines().empty() ? doc.labels().front().pos : doc.lines().front().p1;
    Bounds box{seed.x, seed.x, seed.y, seed.y};
    for (const MapLine& line : doc.lines()) {
        box.take(line.p1);
        box.take(line.p2);
    }
    for (const MapLabel& label : doc.labels())
        box.take(label.pos);
    return box;
}

} // namespace

void zoomStripMouseMove(Editor& editor, int button, float x)
{
    if (button != kLeftButton)
        return;
    const float w = ZoomStrip::kWidth;
    x = std::clamp(x, 0.0f, w);
    double s = double(x) / w * 99.5 + 0.5;
    s = std::clamp(s, 0.5, 100.0);
    const float d = float(s - editor.view.currentScale);
    const MapPoint a = toWorld(editor.view, editor.tools.zoomAnchor.x, editor.tools.zoomAnchor.y);
    adjustOffset(editor, -a.x * d, -a.y * d);
    setCurrentScale(editor, float(s));
}

void reapplyZoomScale(Editor& editor)
{
    zoomStripMouseMove(editor, kLeftButton, editor.zoom.markerX1 - ZoomStrip::kLeft);
}

void centerContent(Editor& editor)
{
    const MapDocument& doc = editor.doc;
    if (doc.lineCount() < 1)
        return;
    setCurrentScale(editor, 1);
    editor.view.offsetX = 0;
    editor.view.offsetY = 0;
    const Bounds box = *contentBounds(doc);
    const float cx = (box.maxX + box.minX) / 2;
    const float cy = (box.maxY + box.minY) / 2;
    editor.view.offsetX = editor.map.width / 2 - cx;
    editor.view.offsetY = editor.map.height / 2 - cy;
}

void fitContentToScreen(Editor& editor)
{
    centerContent(editor);
    editor.tools.zoomAnchor = {editor.map.width / 2, editor.map.height / 2};
    editor.services.events.processEvents();

    // The content overflows a scale when any point lies strictly outside the
    // world rectangle the surface shows; the box of all points tells the same
    // as testing every point, so each trial scale costs nothing. The trial
    // scales step exactly as repeated setCurrentScale calls would.
    const std::optional<Bounds> content = contentBounds(editor.doc);
    ViewState trial = editor.view;
    const auto clampScale = [](float s) { return std::clamp(s, 0.5f, 100.0f); };
    float result;
    for (;;) {
        const MapPoint a = toWorld(trial, 0, 0);
        const MapPoint b = toWorld(trial, editor.map.width, editor.map.height);
        const bool overflows = content
            && (content->minX < a.x || content->maxX > b.x || content->minY < a.y || content->maxY > b.y);
        if (overflows) {
            result = clampScale(trial.currentScale - 0.5f);
            break;
        }
        const float next = clampScale(trial.currentScale + 0.5f);
        if (next == trial.currentScale) {
            result = next;
            break;
        }
        trial.currentScale = next;
    }
    setCurrentScale(editor, result);
    editor.tools.holdDrawing = false;
}

} // namespace plotwell
