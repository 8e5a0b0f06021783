#pragma once

#include "document/colorrgb.h"
#include "render/maprenderer.h"

#include <QSize>

#include <array>
#include <cstdint>
#include <optional>

namespace plotwell {

// Everything the picture of the map depends on (underlay, lines and labels,
// each record drawn as if unselected): while two frames have equal keys, the
// picture of one serves the other. Values that play no part are left at
// their defaults, so that changing them does not count (the current Z while
// the height filter is off, the stereo sliders while stereo is off, ...).
struct PictureKey {
    const MapDocument* doc = nullptr;
    std::uint64_t revision = 0;
    float scale = 0;
    float offsetX = 0;
    float offsetY = 0;
    float currentZ = 0;
    bool showLines = false;
    bool showLabels = false;
    bool heightFilterOn = false;
    float heightRange = 0;
    bool invert = false;
    bool stereo = false;
    std::int16_t stereoSeparation = 0;
    std::int16_t stereoZ = 0;
    std::int16_t brightness = 0;
    std::array<bool, kLayerCount> layers{};
    bool underlayOn = false;
    bool tracingPaper = false;
    bool aspect = false;
    qint64 picture = 0;
    QSize pixels; // device pixels
    double ratio = 1; // device pixels to a logical one
    float widthTwips = 0;
    float heightTwips = 0;
    ColorRGB background;
    int penWidth = 0; // label markers are drawn with the pen the surface holds

    friend bool operator==(const PictureKey& a, const PictureKey& b);
    friend bool operator!=(const PictureKey& a, const PictureKey& b) { return !(a == b); }
};

PictureKey pictureKey(const FrameSource& source, QSize pixels, double ratio, float widthTwips, float heightTwips,
                      ColorRGB background, int penWidth);

// When the picture of next is that of last moved by whole device pixels, the
// move in device pixels: only the offsets differ, by multiples of a device
// pixel, and no underlay is painted (it stays fixed to the surface while the
// map moves).
std::optional<QPoint> scrollBetween(const PictureKey& last, const PictureKey& next);

} // namespace plotwell
