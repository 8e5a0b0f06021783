#pragma once

#include "document/maprecords.h"

namespace plotwell {

// The mapping of world coordinates onto the drawing surface: a uniform scale
// and a translation, in twips. World y grows downwards like surface y.
struct ViewState {
    float currentScale = 1;
    float offsetX = 0;
    float offsetY = 0;
    float currentZ = 0;
    MapPoint lastMousePoint; // last mouse position over the surface (x, y only)
};

// sx, sy := x, y times the scale, in single precision.
inline void scalePoint(MapPoint& p, float scale)
{
    p.sx = p.x * scale;
    p.sy = p.y * scale;
}

// The world point under a surface point; z, sx, sy are 0.
inline MapPoint toWorld(const ViewState& v, float x, float y)
{
    const float dx = x - v.offsetX;
    const float dy = y - v.offsetY;
    MapPoint p;
    p.x = dx / v.currentScale;
    p.y = dy / v.currentScale;
    return p;
}

// The surface position of a point from its stored sx, sy; x, y, z are 0.
inline MapPoint toSurfacePoint(const ViewState& v, const MapPoint& p)
{
    MapPoint s;
    s.sx = p.sx + v.offsetX;
    s.sy = p.sy + v.offsetY;
    return s;
}

} // namespace plotwell
