#include "tools/snapping.h"

#include <cmath>

namespace plotwell {

SurfacePoint surfacePointOf(const View& view, const MapPoint& world)
{
    MapPoint p = world;
    scalePoint(p, view.currentScale);
    return {p.sx + view.offsetX, p.sy + view.offsetY};
}

std::optional<MapPoint> nearestLineEnd(const MapDocument& doc, LineIndex& index, const View& view,
                                       const DisplayOptions& display, SurfacePoint p, bool skipSelected)
{
    if (!display.showLines)
        return std::nullopt;
    const MapPoint at = toWorld(view, p);
    // A little more than the radius in world units, so that rounding never
    // leaves out an end the surface distance below takes.
    const float reach = kSnapRadius / view.currentScale * 1.01f + 1;
    const auto& lines = doc.lines();
    // Distances on the surface, from the ends' own sx, sy: what is drawn.
    double best = double(kSnapRadius) * double(kSnapRadius);
    const MapPoint* nearest = nullptr;
    const auto consider = [&](const MapPoint& end) {
        const double dx = double(end.sx) + view.offsetX - p.x;
        const double dy = double(end.sy) + view.offsetY - p.y;
        const double d = dx * dx + dy * dy;
        if (d <= best) {
            best = d;
            nearest = &end;
        }
    };
    index.forCandidatesNear(doc, at.x, at.y, reach, [&](std::size_t i) {
        const MapLine& line = lines[i];
        if ((skipSelected && line.selected) || !display.layerChecked[std::size_t(line.layer & 3)]
            || outsideHeightRange(display, line.p1.z, view.currentZ))
            return;
        consider(line.p1);
        consider(line.p2);
    });
    if (!nearest)
        return std::nullopt;
    MapPoint end = *nearest;
    end.sx = end.sy = 0;
    return end;
}

} // namespace plotwell
