#pragma once

#include "tools/tool.h"

namespace plotwell {

// Move: a left drag moves every selected line and label by the distance the
// pointer went in the world, shown over the map while the button is held and
// made one step when it is released. With Shift held the move keeps to the
// larger of the two directions. A double click on a label opens its
// properties.
class MoveTool : public Tool {
public:
    void press(const ToolContext& context, SurfacePoint p) override;
    void move(const ToolContext& context, int buttons, SurfacePoint p) override;
    void release(const ToolContext& context) override;
    void doubleClick(const ToolContext& context, SurfacePoint p) override;
    void deactivate(const ToolContext& context) override;
    MapCursor cursor() const override { return MapCursor::Move; }

    bool dragging() const { return m_pressed; }

private:
    bool m_pressed = false;
    MapPoint m_from; // the world point pressed, snapped when snapping is on
};

// The world point a tool takes at p: the line end the pointer snaps to, when
// snapping is on and one is near (its own x, y, z), else the point under the
// pointer (z 0). With skipSelected, ends of selected lines are passed over.
struct TakenPoint {
    MapPoint world;
    bool snapped = false;
};
TakenPoint takePoint(const ToolContext& context, SurfacePoint p, bool skipSelected = false);

// Shows the snap ring on the end the pointer would snap to at p, or hides it.
void showSnapRing(const ToolContext& context, SurfacePoint p, bool skipSelected = false);

} // namespace plotwell
