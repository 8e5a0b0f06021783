#pragma once

#include "tools/tool.h"

namespace plotwell {

// Pointer: a click toggles what is under it (or clears the selection when it
// hits nothing); a drag selects everything it passes over.
class PointerTool : public Tool {
public:
    void press(const ToolContext& context, SurfacePoint p) override;
    void move(const ToolContext& context, int buttons, SurfacePoint p) override;
};

// Select: a click as the Pointer; a drag shows the selection rectangle, which
// selects what lies in it when the button is released.
class SelectTool : public Tool {
public:
    void press(const ToolContext& context, SurfacePoint p) override;
    void move(const ToolContext& context, int buttons, SurfacePoint p) override;
    void release(const ToolContext& context) override;
};

// Pan: a drag moves the view with the pointer.
class PanTool : public Tool {
public:
    void press(const ToolContext& context, SurfacePoint p) override;
    void move(const ToolContext& context, int buttons, SurfacePoint p) override;
    MapCursor cursor() const override { return MapCursor::Move; }

    SurfacePoint anchor() const { return m_anchor; }

private:
    SurfacePoint m_anchor; // the surface point of the last pan step
};

} // namespace plotwell
