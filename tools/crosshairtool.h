#pragma once

#include "document/maprecords.h"
#include "tools/tool.h"

#include <QString>

namespace plotwell {

// The crosshair lines lnCHx and lnCHy over the map: a horizontal and a
// vertical line through a surface point.
struct CrosshairLines {
    bool visible = false;
    float x = 0;
    float y = 0;
};

// Crosshair: a click marks the point, prints its location beside it on the
// map and copies it to the clipboard; the map then stays as it is until the
// pointer moves in another tool. A right click asks for a location to shift
// the mark to.
class CrosshairTool : public Tool {
public:
    static QString shiftPrompt() { return QStringLiteral("Shift this point to what loc?"); }

    void press(const ToolContext& context, SurfacePoint p) override;
    void deactivate(const ToolContext&) override { hideLines(); }

    // The right press: the shift prompt, its answer to shiftMarkToLoc.
    void rightPress(const ToolContext& context);
    void hideLines() { m_lines.visible = false; }

    const CrosshairLines& lines() const { return m_lines; }
    // World point of the last mark; (0, 0) before the first.
    const MapPoint& mark() const { return m_mark; }

private:
    CrosshairLines m_lines;
    MapPoint m_mark;
};

// Shifts the view so that the typed location comes to lie where the mark is
// shown. The answer is read like the location read-out, "-y , -x"; an answer
// without a comma, or with a value beyond what a single holds, changes nothing.
void shiftMarkToLoc(const ToolContext& context, const MapPoint& mark, const QString& answer);

} // namespace plotwell
