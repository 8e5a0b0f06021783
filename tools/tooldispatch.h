#pragma once

#include "tools/crosshairtool.h"
#include "tools/drawingtools.h"
#include "tools/movetool.h"
#include "tools/navigationtools.h"
#include "tools/tool.h"

namespace plotwell {

// The tool palette and the dispatch of the map's mouse events to the tools.
// The rules that hold for every tool live here: the right button pans in
// every tool (but opens the shift prompt of the Crosshair tool), every press
// that counts as a left press sets the zoom anchor, a move releases a held
// frame, and presses and right drags hide the crosshair.
class ToolDispatcher {
public:
    ToolState state;

    ToolId current() const { return m_current; }

    // An icon of the palette clicked.
    void choose(const ToolContext& context, ToolId tool);

    // The one button that went down or up (1 left, 2 right, 4 middle), or
    // the buttons held during a move, summed; the point in surface twips.
    void press(const ToolContext& context, int button, SurfacePoint p);
    void move(const ToolContext& context, int buttons, SurfacePoint p);
    void release(const ToolContext& context);
    // A left double click, after its presses and releases: the chosen tool's.
    void doubleClick(const ToolContext& context, SurfacePoint p);
    // A key pressed on the map; every tool hears it.
    void key(const ToolContext& context, int keyCode, int shift);

    Tool& tool(ToolId id);
    PanTool& pan() { return m_pan; }
    LineTool& line() { return m_line; }
    LabelTool& label() { return m_label; }
    CrosshairTool& crosshair() { return m_crosshair; }
    const LineTool& line() const { return m_line; }
    const LabelTool& label() const { return m_label; }
    const CrosshairTool& crosshair() const { return m_crosshair; }
    const MoveTool& mover() const { return m_move; }

private:
    ToolId m_current = ToolId::Pointer;
    PointerTool m_pointer;
    PanTool m_pan;
    SelectTool m_select;
    LineTool m_line;
    FreehandTool m_freehand;
    LabelTool m_label;
    CrosshairTool m_crosshair;
    MoveTool m_move;
};

} // namespace plotwell
