#pragma once

#include "tools/toolcontext.h"
#include "view/view.h"

#include <cstdint>

namespace plotwell {

// The eight tools, by their icon's index in the palette.
enum class ToolId : std::int16_t { Pointer = 0, Pan, Select, Line, Freehand, Label, Crosshair, Move };
constexpr int kToolCount = 8;
constexpr ToolId kAllTools[kToolCount] = {ToolId::Pointer,  ToolId::Pan,   ToolId::Select,    ToolId::Line,
                                          ToolId::Freehand, ToolId::Label, ToolId::Crosshair, ToolId::Move};

// One editing tool. The dispatcher applies the rules common to all tools
// (the right button pans in every tool, the zoom anchor, holding the frame,
// hiding the crosshair) and hands each tool only what is its own.
class Tool {
public:
    virtual ~Tool() = default;

    // Another tool was chosen from the palette.
    virtual void deactivate(const ToolContext&) {}
    // A left press at p, or a right press that pans.
    virtual void press(const ToolContext&, SurfacePoint) {}
    // The pointer moved to p with these buttons held (1 left, 2 right, 4
    // middle, summed; 0 none); a right drag reaches the Pan tool as a left one.
    virtual void move(const ToolContext&, int /*buttons*/, SurfacePoint) {}
    // A button was released on the map. Every tool hears it, chosen or not,
    // and ends what it has in progress.
    virtual void release(const ToolContext&) {}
    // A left double click at p, after its two presses and releases.
    virtual void doubleClick(const ToolContext&, SurfacePoint) {}
    // A key was pressed on the map. Every tool hears it, chosen or not.
    virtual void key(const ToolContext&, int /*keyCode*/, int /*shift*/) {}

    // The map's pointer while the tool is chosen.
    virtual MapCursor cursor() const { return MapCursor::Arrow; }
};

} // namespace plotwell
