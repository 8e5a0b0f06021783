#include "render/maprenderer.h"

#include "render/displayoptions.h"
#include "render/labelfont.h"
#include "render/stereo.h"
#include "render/underlay.h"
#include "shell/editor.h"

#include <cmath>

namespace plotwell {
namespace {

// The height filter: hidden only when the difference, as a single, is
// strictly greater than the range.
bool outsideHeightRange(const DisplayOptions& options, float z, float currentZ)
{
    return options.heightFilterOn && float(std::fabs(double(z) - double(currentZ))) > options.heightRange;
}

// A layer number without a check box would be a fault of the document; such
// a record is not drawn rather than read past the boxes.
bool layerVisible(const Editor& editor, std::int16_t layer)
{
    return layer >= 0 && layer < kLayerCount && editor.layers.checked[std::size_t(layer)];
}

void drawAllLines(Editor& editor, bool noSelected)
{
    DrawingSurface& surface = editor.services.surface;
    const DisplayOptions& options = editor.display;
    const ColorRGB background = surface.backColor();
    const float currentZ = editor.view.currentZ;
    for (const MapLine& line : editor.doc.lines()) {
        // Only the first end's height counts.
        bool draw = !outsideHeightRange(options, line.p1.z, currentZ);
        if (!layerVisible(editor, line.layer))
            draw = false;
        if (noSelected && line.selected)
            draw = false;
        if (!draw)
            continue;
        const MapPoint s1 = toSurfacePoint(editor.view, line.p1);
        const MapPoint s2 = toSurfacePoint(editor.view, line.p2);
        const ColorRGB own{line.r, line.g, line.b};
        const ColorRGB colour = line.selected ? flashColor(options, own) : invertIfNeeded(options, own, background);
        surface.setPenWidth(2);
        if (options.stereoChecked) {
            drawStereoLine(editor, line, s1, s2, colour);
        } else {
            surface.setPenColor(colour);
            surface.line(s1.sx, s1.sy, s2.sx, s2.sy);
        }
        // The next drawing on the surface starts from a black pen.
        surface.setPenColor(kBlack);
    }
}

void drawAllLabels(Editor& editor)
{
    DrawingSurface& surface = editor.services.surface;
    const DisplayOptions& options = editor.display;
    const ColorRGB background = surface.backColor();
    const float currentZ = editor.view.currentZ;
    const float scale = editor.view.currentScale;
    const float points = labelFontPoints(scale);
    for (const MapLabel& label : editor.doc.labels()) {
        if (outsideHeightRange(options, label.pos.z, currentZ) || !layerVisible(editor, label.layer))
            continue;
        const MapPoint s = toSurfacePoint(editor.view, label.pos);
        const ColorRGB own{label.r, label.g, label.b};
        ColorRGB colour;
        if (label.selected)
            colour = flashColor(options, own);
        if (options.stereoChecked) {
            drawStereoLabel(editor, label, s, colour);
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

void drawLines(Editor& editor, bool noSelected)
{
    if (editor.tools.holdDrawing)
        return;
    DrawingSurface& surface = editor.services.surface;
    editor.map.selectBox.border = surface.backColor() == kBlack ? kWhite : kBlack;
    surface.clear();
    if (editor.underlay.underlayOn)
        paintUnderlay(editor);
    if (editor.display.showLines)
        drawAllLines(editor, noSelected);
    if (editor.display.showLabels)
        drawAllLabels(editor);
    surface.refresh();
}

} // namespace plotwell
