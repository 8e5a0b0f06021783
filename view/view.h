#pragma once

#include "document/maprecords.h"

#include <QString>

namespace plotwell {

// A position on the drawing surface, in twips from its top-left corner.
struct SurfacePoint {
    float x = 0;
    float y = 0;
};

// The zoom control in the tool frame: the strip lblScale with its caption and
// the red marker line lnScale, in twips relative to the frame.
struct ZoomStrip {
    static constexpr float kLeft = 60;
    static constexpr float kTop = 600;
    static constexpr float kWidth = 3615;
    static constexpr float kHeight = 255;

    QString caption; // "Scale: " and the scale
    float markerX1 = 180; // X1 and X2 of lnScale
};

// The location read-out under the mouse: lblX, lblY, lblZ and lblLoc.
struct LocationReadout {
    QString x = QStringLiteral("0");
    QString y = QStringLiteral("0");
    QString z = QStringLiteral("0");
    QString loc = QStringLiteral("Loc: ");
};

// The mapping of world coordinates onto the drawing surface, a uniform scale
// and a translation in twips (world y grows downwards like surface y), with
// the controls that show and change it.
struct View {
    float currentScale = 1;
    float offsetX = 0;
    float offsetY = 0;
    float currentZ = 0;
    SurfacePoint lastMousePoint; // last mouse position over the surface
    SurfacePoint zoomAnchor; // the zoom strip zooms about this point

    // The drawing surface's size, twips.
    float mapWidth = 6795;
    float mapHeight = 7155;

    ZoomStrip zoom;
    LocationReadout readout;
    // The user's decimal separator, for captions in the locale's ordinary form.
    char decimalSeparator = '.';
};

// The world point under a surface point; z, sx, sy are 0.
inline MapPoint toWorld(const View& v, float x, float y)
{
    const float dx = x - v.offsetX;
    const float dy = y - v.offsetY;
    MapPoint p;
    p.x = dx / v.currentScale;
    p.y = dy / v.currentScale;
    return p;
}
inline MapPoint toWorld(const View& v, SurfacePoint s)
{
    return toWorld(v, s.x, s.y);
}

// The surface position of a point from its stored sx, sy; x, y, z are 0.
inline MapPoint toSurfacePoint(const View& v, const MapPoint& p)
{
    MapPoint s;
    s.sx = p.sx + v.offsetX;
    s.sy = p.sy + v.offsetY;
    return s;
}

} // namespace plotwell
