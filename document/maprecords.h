#pragma once

#include <QString>

#include <cstdint>
#include <string>

namespace plotwell {

constexpr int kLayerCount = 4;

// One point of a line or the anchor of a label. x, y, z are world coordinates
// as read from the map file; sx, sy are x and y times the current scale, kept
// so that drawing only has to add the view offset.
struct MapPoint {
    float x = 0;
    float y = 0;
    float z = 0;
    float sx = 0;
    float sy = 0;
};

// sx, sy := x, y times the scale, in single precision.
inline void scalePoint(MapPoint& p, float scale)
{
    p.sx = p.x * scale;
    p.sy = p.y * scale;
}

struct MapLine {
    MapPoint p1;
    MapPoint p2;
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    bool selected = false;
    std::int16_t layer = 0;
};

struct MapLabel {
    MapPoint pos;
    // The text as stored in the file: Windows-1252 bytes, spaces held as "_".
    std::string text;
    std::int16_t size = 0;
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    bool selected = false;
    std::int16_t layer = 0;
};

// The name a layer is shown by until it has a file: "Base Layer", "Layer 1" .. "Layer 3".
inline QString defaultLayerName(int layer)
{
    return layer == 0 ? QStringLiteral("Base Layer") : QStringLiteral("Layer %1").arg(layer);
}

} // namespace plotwell
