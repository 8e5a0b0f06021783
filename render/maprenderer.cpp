#include "render/maprenderer.h"

#include "render/colorrules.h"
#include "render/editoverlay.h"
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
    return layer >= 0 && layer < kLayerCount && source.display.layerChecked[std::size_t(layer)];
}

// Takes the drawing state a record sets and draws nothing.
class StateOnly : public DrawingSurface {
public:
    explicit StateOnly(DrawingSurface& target) : m_target(target) {}
    float width() const override { return m_target.width(); }
    float height() const override { return m_target.height(); }
    void resize(float, float) override {}
    ColorRGB backColor() const override { return m_target.backColor(); }
    void setBackColor(ColorRGB) override {}
    void clear() override {}
    void setPenWidth(int pixels) override { m_target.setPenWidth(pixels); }
    void setPenColor(ColorRGB colour) override { m_target.setPenColor(colour); }
    int penWidth() const override { return m_target.penWidth(); }
    ColorRGB penColor() const override { return m_target.penColor(); }
    void setFillColor(ColorRGB colour) override { m_target.setFillColor(colour); }
    void line(float, float, float, float) override {}
    void circle(float, float, float, ColorRGB) override {}
    void setTextPosition(float x, float y) override { m_target.setTextPosition(x, y); }
    void setFont(float points, bool bold) override { m_target.setFont(points, bold); }
    void print(std::string_view) override {}
    void paintPicture(const QImage&, const QRectF&, const QRectF&, RasterOp) override {}
    void refresh() override {}

private:
    DrawingSurface& m_target;
};

// A box of the surface in twips, widened by more than a line's pen and caps reach.
struct TwipBox {
    float left, top, right, bottom;
    bool sideways; // x counts too; stereo copies are shifted sideways by any amount
};

TwipBox twipBox(const QRectF& box, bool stereo)
{
    constexpr double kPad = 8 * 15;
    return {float(box.left() - kPad), float(box.top() - kPad), float(box.right() + kPad), float(box.bottom() + kPad),
            !stereo};
}

bool misses(const TwipBox& box, const MapPoint& s1, const MapPoint& s2)
{
    if ((s1.sy < box.top && s2.sy < box.top) || (s1.sy > box.bottom && s2.sy > box.bottom))
        return true;
    return box.sideways && ((s1.sx < box.left && s2.sx < box.left) || (s1.sx > box.right && s2.sx > box.right));
}

void drawAllLines(DrawingSurface& surface, const FrameSource& source, const MapPart& part)
{
    const ColorRGB background = surface.backColor();
    std::optional<TwipBox> box;
    if (part.within)
        box = twipBox(*part.within, source.display.stereoChecked);
    bool anyDrawn = false;
    for (const MapLine& line : source.doc.lines()) {
        if (!lineShown(source, line) || (part.noSelected && line.selected))
            continue;
        anyDrawn = true;
        if (box && misses(*box, toSurfacePoint(source.view, line.p1), toSurfacePoint(source.view, line.p2)))
            continue;
        drawLine(surface, source, line, background, part.showSelection);
    }
    // Lines left out still leave their pen, as a whole frame's would.
    if (box && anyDrawn) {
        surface.setPenWidth(2);
        surface.setPenColor(kBlack);
    }
}

void drawAllLabels(DrawingSurface& surface, const FrameSource& source, const MapPart& part)
{
    const ColorRGB background = surface.backColor();
    for (const MapLabel& label : source.doc.labels()) {
        if (labelShown(source, label))
            drawLabel(surface, source, label, background, part.showSelection);
    }
}

} // namespace

bool lineShown(const FrameSource& source, const MapLine& line)
{
    // Only the first end's height counts.
    return !outsideHeightRange(source.display, line.p1.z, source.view.currentZ) && layerVisible(source, line.layer);
}

bool labelShown(const FrameSource& source, const MapLabel& label)
{
    return !outsideHeightRange(source.display, label.pos.z, source.view.currentZ) && layerVisible(source, label.layer);
}

void drawLine(DrawingSurface& surface, const FrameSource& source, const MapLine& line, ColorRGB background,
              bool showSelection)
{
    const DisplayOptions& options = source.display;
    const MapPoint s1 = toSurfacePoint(source.view, line.p1);
    const MapPoint s2 = toSurfacePoint(source.view, line.p2);
    const ColorRGB own{line.r, line.g, line.b};
    const bool selected = line.selected && showSelection;
    const ColorRGB colour = selected ? flashColor(options, own) : invertIfNeeded(options, own, background);
    surface.setPenWidth(2);
    if (options.stereoChecked) {
        MapLine shown = line;
        shown.selected = selected;
        drawStereoLine(surface, options, source.view.currentScale, shown, s1, s2, colour);
    } else {
        surface.setPenColor(colour);
        surface.line(s1.sx, s1.sy, s2.sx, s2.sy);
    }
    // The next drawing on the surface starts from a black pen.
    surface.setPenColor(kBlack);
}

void drawLabel(DrawingSurface& surface, const FrameSource& source, const MapLabel& label, ColorRGB background,
               bool showSelection)
{
    const DisplayOptions& options = source.display;
    const float scale = source.view.currentScale;
    const MapPoint s = toSurfacePoint(source.view, label.pos);
    const ColorRGB own{label.r, label.g, label.b};
    const bool selected = label.selected && showSelection;
    ColorRGB colour;
    if (selected)
        colour = flashColor(options, own);
    if (options.stereoChecked) {
        if (selected == label.selected) {
            drawStereoLabel(surface, options, scale, label, s, colour);
        } else {
            MapLabel shown = label;
            shown.selected = selected;
            drawStereoLabel(surface, options, scale, shown, s, colour);
        }
        return;
    }
    if (!selected)
        colour = invertIfNeeded(options, own, background);
    surface.setPenColor(colour);
    surface.setFillColor(kBlack);
    // The marker keeps whatever pen width the surface holds.
    surface.circle(s.sx, s.sy, scale, kBlack);
    surface.setTextPosition(s.sx, s.sy);
    surface.setFont(labelFontPoints(scale), false);
    // Printed as stored: spaces stay underscores.
    surface.print(label.text);
}

void drawMap(DrawingSurface& surface, const FrameSource& source, const MapPart& part)
{
    if (source.underlay.underlayOn)
        paintUnderlay(surface, source.underlay);
    if (source.display.showLines)
        drawAllLines(surface, source, part);
    if (source.display.showLabels)
        drawAllLabels(surface, source, part);
}

void drawFrame(DrawingSurface& surface, const FrameSource& source, bool noSelected)
{
    surface.clear();
    MapPart part;
    part.noSelected = noSelected;
    drawMap(surface, source, part);
    if (source.player)
        drawPlayerMarker(surface, source.view, *source.player);
    drawEditMarks(surface, source);
    surface.refresh();
}

LastDrawn lastDrawn(const FrameSource& source)
{
    LastDrawn last;
    const auto& lines = source.doc.lines();
    for (std::size_t i = lines.size(); source.display.showLines && i-- > 0;) {
        if (lineShown(source, lines[i])) {
            last.line = i;
            break;
        }
    }
    const auto& labels = source.doc.labels();
    for (std::size_t i = labels.size(); source.display.showLabels && i-- > 0;) {
        if (labelShown(source, labels[i])) {
            last.label = i;
            break;
        }
    }
    return last;
}

void leaveFrameState(DrawingSurface& surface, const FrameSource& source, const LastDrawn& last)
{
    StateOnly state(surface);
    const ColorRGB background = surface.backColor();
    if (last.line)
        drawLine(state, source, source.doc.lines()[*last.line], background, true);
    if (last.label)
        drawLabel(state, source, source.doc.labels()[*last.label], background, true);
}

ColorRGB selectBoxColor(ColorRGB background)
{
    return background == kBlack ? kWhite : kBlack;
}

} // namespace plotwell
