#include "tools/selection.h"

#include <algorithm>
#include <cmath>

namespace plotwell {
namespace {

// |v| rounded to single precision, as every difference is before it is compared.
float singleAbs(double v)
{
    return float(std::fabs(v));
}

// v lies between a and b: strictly ordered ends, both included; when a = b
// nothing lies between them.
bool between(float v, float a, float b)
{
    return (a < b && a <= v && v <= b) || (b < a && b <= v && v <= a);
}

bool inBox(const MapPoint& p, const MapPoint& a, const MapPoint& b)
{
    return a.x <= p.x && p.x <= b.x && a.y <= p.y && p.y <= b.y;
}

} // namespace

bool lineHitAt(const MapLine& line, float x, float y)
{
    const float t = kHitTolerance;
    const MapPoint& p1 = line.p1;
    const MapPoint& p2 = line.p2;
    double dx = double(p1.x) - double(p2.x);
    const double dy = double(p1.y) - double(p2.y);
    if (-t < dx && dx < t) {
        dx = t; // the slope test below treats a steep line as rising over the tolerance
        if (singleAbs(double(x) - double(p1.x)) < t && between(y, p1.y, p2.y))
            return true;
    }
    if (-t < dy && dy < t && singleAbs(double(y) - double(p1.y)) < t && between(x, p1.x, p2.x))
        return true;
    if (!between(x, p1.x, p2.x) || !between(y, p1.y, p2.y))
        return false;
    if (x == p1.x)
        return singleAbs(double(p1.y) - double(y)) < t;
    const double m = dy / dx;
    const double n = (double(p1.y) - double(y)) / (double(p1.x) - double(x));
    return singleAbs(n - m) < t;
}

bool Selection::hitTestAt(MapDocument& doc, const View& view, const DisplayOptions& display, float x, float y, float z,
                          bool toggle)
{
    const MapPoint p = toWorld(view, x, y);
    bool found = false;
    if (display.linesChecked) {
        const auto& lines = doc.lines();
        m_index.forCandidates(doc, p.x, p.y, [&](std::size_t i) {
            const MapLine& line = lines[i];
            if (outsideHeightRange(display, line.p1.z, z) || !lineHitAt(line, p.x, p.y))
                return;
            doc.setLineSelected(i, toggle ? !line.selected : true);
            found = true;
        });
    }
    if (display.labelsChecked) {
        const float t = kHitTolerance;
        const auto& labels = doc.labels();
        for (std::size_t i = 0; i < labels.size(); ++i) {
            const MapLabel& label = labels[i];
            if (label.layer != doc.activeLayer)
                continue;
            // The height filter takes labels within the tolerance of z, not within its range.
            if (singleAbs(double(label.pos.x) - double(p.x)) < t && singleAbs(double(label.pos.y) - double(p.y)) < t
                && (!display.heightFilterOn || singleAbs(double(label.pos.z) - double(z)) < t)) {
                doc.setLabelSelected(i, toggle ? !label.selected : true);
                found = true;
            }
        }
    }
    return found;
}

void Selection::selectInBox(MapDocument& doc, const View& view, const DisplayOptions& display) const
{
    // Top-left and bottom-right in the world, as world y grows downwards.
    const MapPoint a = toWorld(view, box.left, box.top);
    const MapPoint b = toWorld(view, box.left + box.width, box.top + box.height);
    const float z = view.currentZ;
    const std::int16_t layer = doc.activeLayer;
    const auto& lines = doc.lines();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const MapLine& line = lines[i];
        if (line.layer == layer && !outsideHeightRange(display, line.p1.z, z)
            && (inBox(line.p1, a, b) || inBox(line.p2, a, b)))
            doc.setLineSelected(i, true);
    }
    const auto& labels = doc.labels();
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const MapLabel& label = labels[i];
        if (label.layer == layer && !outsideHeightRange(display, label.pos.z, z) && inBox(label.pos, a, b))
            doc.setLabelSelected(i, true);
    }
}

void Selection::showSelectBox(SurfacePoint a, SurfacePoint b)
{
    box.left = std::min(a.x, b.x);
    box.top = std::min(a.y, b.y);
    box.width = std::fabs(b.x - a.x);
    box.height = std::fabs(b.y - a.y);
    box.visible = true;
}

} // namespace plotwell
