#include "render/maprenderer.h"

#include "render/displayoptions.h"
#include "render/labelfont.h"
#include "render/stereo.h"
#include "render/underlay.h"

#include <cmath>

namespace plotwell {
namespace {

// A layer number without a check box would be a fault of the document; such
// a record is not drawn rather than read past the boxes.
bool layerVisible(const FrameSource& source, std::int16_t layer)
{
    return layer >= 0 && layer < kLayerCount && source.layerShown[std::size_t(layer)];
}

void drawAllLines(DrawingSurface& surface, const FrameSource& source, bool noSelected)
{
    const DisplayOptions& options = source.display;
    const ColorRGB background = surface.backColor();
    const float currentZ = source.view.currentZ;
    const float scale = source.view.currentScale;
    for (const MapLine& line : source.doc.lines()) {
        // Only the first end's height counts.
        bool draw = !outsideHeightRange(options, line.p1.z, currentZ);
        if (!layerVisible(source, line.layer))
            draw = false;
        if (noSelected && line.selected)
            draw = false;
        if (!draw)
            continue;
        const MapPoint s1 = toSurfacePoint(source.view, line.p1);
        const MapPoint s2 = toSurfacePoint(source.view, line.p2);
        const ColorRGB own{line.r, line.g, line.b};
        const ColorRGB colour = line.selected ? flashColor(options, own) : invertIfNeeded(options, own, background);
        surface.setPenWidth(2);
        if (options.stereoChecked) {
            drawStereoLine(surface, options, scale, line, s1, s2, colour);
        } else {
            surface.setPenColor(colour);
            surface.line(s1.sx, s1.sy, s2.sx, s2.sy);
        }
        // The next drawing on the surface starts from a black pen.
        surface.setPenColor(kBlack);
    }
}

void drawAllLabels(DrawingSurface& surface, const FrameSource& source)
{
    const DisplayOptions& options = source.display;
    const ColorRGB background = surface.backColor();
    const float currentZ = source.view.currentZ;
    const float scale = source.view.currentScale;
    const float points = labelFontPoints(scale);
    for (const MapLabel& label : source.doc.labels()) {
        if (outsideHeightRange(options, label.pos.z, currentZ) || !layerVisible(source, label.layer))
            continue;
        const MapPoint s = toSurfacePoint(source.view, label.pos);
        const ColorRGB own{label.r, label.g, label.b};
        ColorRGB colour;
        if (label.selected)
            colour = flashColor(options, own);
        if (options.stereoChecked) {
            drawStereoLabel(surface, options, scale, label, s, colour);
            continue;
        }
        if (!label.selected)
            colour = invertIfNeeded(options, own, background);
        surface.setPenColor(colour);
        surface.setFillColor(kBlack);
        // The marker keeps whatever pen width the surface holds.
        surface.circle(s.sx, s.sy, scale, kBlack);
        surface.setTextPosition(s.sx, s.sy);
        surface.setFont(points, false);
        // Printed as stored: spaces stay underscores.
        surface.print(label.text);
    }
}

} // namespace

void drawFrame(DrawingSurface& surface, const FrameSource& source, bool noSelected)
{
    surface.clear();
    if (source.underlay.underlayOn)
        paintUnderlay(surface, source.underlay);
    if (source.display.showLines)
        drawAllLines(surface, source, noSelected);
    if (source.display.showLabels)
        drawAllLabels(surface, source);
    if (source.player)
        drawPlayerMarker(surface, source.view, *source.player);
    surface.refresh();
}

ColorRGB selectBoxColor(ColorRGB background) { return background == kBlack ? kWhite : kBlack; }

} // namespace plotwell
