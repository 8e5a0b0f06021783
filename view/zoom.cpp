#include "view/zoom.h"

#include "view/viewcontrol.h"

#include <algorithm>
#include <cmath>
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

// The middle of low and high in single precision. Near the single limit their
// sum overflows; their halves do not.
float midpoint(float low, float high)
{
    const float middle = (high + low) / 2;
    return std::isfinite(middle) ? middle : high / 2 + low / 2;
}

} // namespace

void zoomStripMouseMove(View& view, MapDocument& doc, int button, float x)
{
    if (button != kLeftButton)
        return;
    const float w = ZoomStrip::kWidth;
    x = std::clamp(x, 0.0f, w);
    double s = double(x) / w * 99.5 + 0.5;
    s = std::clamp(s, 0.5, 100.0);
    const float d = float(s - view.currentScale);
    const MapPoint a = toWorld(view, view.zoomAnchor);
    if (!adjustOffset(view, -a.x * d, -a.y * d))
        return;
    setCurrentScale(view, doc, float(s));
}

void reapplyZoomScale(View& view, MapDocument& doc)
{
    zoomStripMouseMove(view, doc, kLeftButton, view.zoom.markerX1 - ZoomStrip::kLeft);
}

void centerContent(View& view, MapDocument& doc)
{
    if (doc.lineCount() < 1)
        return;
    setCurrentScale(view, doc, 1);
    view.offsetX = 0;
    view.offsetY = 0;
    const Bounds box = *contentBounds(doc);
    const float cx = midpoint(box.minX, box.maxX);
    const float cy = midpoint(box.minY, box.maxY);
    view.offsetX = view.mapWidth / 2 - cx;
    view.offsetY = view.mapHeight / 2 - cy;
}

float fittingScale(const View& view, const MapDocument& doc)
{
    // The content overflows a scale when any point lies strictly outside the
    // world rectangle the surface shows; the box of all points tells the same
    // as testing every point, so each trial scale costs nothing. The trial
    // scales step exactly as repeated setCurrentScale calls would.
    const std::optional<Bounds> content = contentBounds(doc);
    View trial = view;
    const auto clampScale = [](float s) { return std::clamp(s, 0.5f, 100.0f); };
    for (;;) {
        const MapPoint a = toWorld(trial, 0, 0);
        const MapPoint b = toWorld(trial, view.mapWidth, view.mapHeight);
        const bool overflows =
            content && (content->minX < a.x || content->maxX > b.x || content->minY < a.y || content->maxY > b.y);
        if (overflows)
            return clampScale(trial.currentScale - 0.5f);
        const float next = clampScale(trial.currentScale + 0.5f);
        if (next == trial.currentScale)
            return next;
        trial.currentScale = next;
    }
}

} // namespace plotwell
