#include "render/playermarker.h"

#include <cmath>

namespace plotwell {
namespace {

constexpr int kRingSegments = 24;

void drawShape(DrawingSurface& surface, SurfacePoint c)
{
    constexpr float r = PlayerMarker::kRingRadius;
    constexpr float from = PlayerMarker::kArmFrom;
    constexpr float to = PlayerMarker::kArmTo;
    constexpr double kStep = 2 * 3.14159265358979323846 / kRingSegments;
    float px = c.x + r;
    float py = c.y;
    for (int i = 1; i <= kRingSegments; ++i) {
        const float nx = c.x + r * float(std::cos(kStep * i));
        const float ny = c.y + r * float(std::sin(kStep * i));
        surface.line(px, py, nx, ny);
        px = nx;
        py = ny;
    }
    surface.line(c.x - to, c.y, c.x - from, c.y);
    surface.line(c.x + from, c.y, c.x + to, c.y);
    surface.line(c.x, c.y - to, c.x, c.y - from);
    surface.line(c.x, c.y + from, c.x, c.y + to);
}

} // namespace

SurfacePoint playerMarkerCentre(const View& view, const PlayerMarker& marker)
{
    // As the records are placed: scaled in single precision, then moved by the offset.
    MapPoint p = marker.at;
    scalePoint(p, view.currentScale);
    return {p.sx + view.offsetX, p.sy + view.offsetY};
}

void drawPlayerMarker(DrawingSurface& surface, const View& view, const PlayerMarker& marker)
{
    if (!marker.shown)
        return;
    const SurfacePoint c = playerMarkerCentre(view, marker);
    if (!std::isfinite(c.x) || !std::isfinite(c.y))
        return;
    const ColorRGB pen = surface.penColor();
    const int width = surface.penWidth();
    surface.setPenWidth(PlayerMarker::kOutlineWidth);
    surface.setPenColor(PlayerMarker::kOutline);
    drawShape(surface, c);
    surface.setPenWidth(PlayerMarker::kWidth);
    surface.setPenColor(PlayerMarker::kColour);
    drawShape(surface, c);
    surface.setPenWidth(width);
    surface.setPenColor(pen);
}

} // namespace plotwell
