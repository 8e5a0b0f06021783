#include "render/picturekey.h"

#include <cmath>
#include <tuple>

namespace plotwell {
namespace {

auto tied(const PictureKey& k)
{
    return std::tie(k.doc, k.revision, k.scale, k.currentZ, k.showLines, k.showLabels, k.heightFilterOn, k.heightRange,
                    k.invert, k.stereo, k.stereoSeparation, k.stereoZ, k.brightness, k.layers, k.underlayOn,
                    k.tracingPaper, k.aspect, k.picture, k.pixels, k.ratio, k.widthTwips, k.heightTwips, k.background,
                    k.penWidth);
}

// A difference of offsets as whole device pixels, when it is one. At some
// ratios a device pixel is no whole number of twips (8.57... at 1.75): a move
// that misses a whole pixel by less than single precision can tell is taken
// as one, since it moves no line by a pixel either.
std::optional<int> wholePixels(float from, float to, double ratio)
{
    const double pixels = (double(to) - double(from)) / 15 * ratio;
    const double whole = std::round(pixels);
    if (!std::isfinite(pixels) || std::fabs(pixels - whole) > 1e-3 || std::fabs(pixels) > 1e6)
        return std::nullopt;
    return int(whole);
}

} // namespace

bool operator==(const PictureKey& a, const PictureKey& b)
{
    return tied(a) == tied(b) && a.offsetX == b.offsetX && a.offsetY == b.offsetY;
}

PictureKey pictureKey(const FrameSource& source, QSize pixels, double ratio, float widthTwips, float heightTwips,
                      ColorRGB background, int penWidth)
{
    const DisplayOptions& d = source.display;
    PictureKey k;
    k.doc = &source.doc;
    k.revision = source.doc.revision();
    k.scale = source.view.currentScale;
    k.offsetX = source.view.offsetX;
    k.offsetY = source.view.offsetY;
    k.showLines = d.showLines;
    k.showLabels = d.showLabels;
    k.heightFilterOn = d.heightFilterOn;
    if (d.heightFilterOn) {
        k.currentZ = source.view.currentZ;
        k.heightRange = d.heightRange;
    }
    k.invert = d.invertChecked;
    k.stereo = d.stereoChecked;
    if (d.stereoChecked) {
        k.stereoSeparation = d.stereo;
        k.stereoZ = d.stereoZ;
        k.brightness = d.brightness;
    }
    k.layers = source.display.layerChecked;
    const UnderlayState& u = source.underlay;
    k.underlayOn = u.underlayOn;
    if (u.underlayOn) {
        k.tracingPaper = u.tracingPaperOn;
        k.aspect = u.aspectChecked;
        k.picture = u.picture.cacheKey();
    }
    k.pixels = pixels;
    k.ratio = ratio;
    k.widthTwips = widthTwips;
    k.heightTwips = heightTwips;
    k.background = background;
    k.penWidth = penWidth;
    return k;
}

std::optional<QPoint> scrollBetween(const PictureKey& last, const PictureKey& next)
{
    if (tied(last) != tied(next) || next.underlayOn)
        return std::nullopt;
    const auto dx = wholePixels(last.offsetX, next.offsetX, next.ratio);
    const auto dy = wholePixels(last.offsetY, next.offsetY, next.ratio);
    if (!dx || !dy || (*dx == 0 && *dy == 0))
        return std::nullopt;
    return QPoint(*dx, *dy);
}

} // namespace plotwell
