#pragma once

#include "document/maprecords.h"

#include <cstdint>

namespace plotwell {

struct SurfacePoint {
    float x = 0;
    float y = 0;
};

enum Tool : std::int16_t { Pointer = 0, Pan = 1, Select = 2, Line = 3, Freehand = 4, Label = 5, Crosshair = 6 };
constexpr int kToolCount = 7;

// The state of the editing tools and of the keys the map surface keeps.
struct ToolState {
    std::int16_t currentTool = Pointer;
    bool holdDrawing = false; // while true, a frame draws nothing
    SurfacePoint panAnchor;
    SurfacePoint zoomAnchor;
    MapPoint crosshairMark;
    bool crosshairVisible = false; // lnCHx and lnCHy
    SurfacePoint crosshairAt;

    bool ctrlKeyDown = false;
    bool theShiftKeyIsDown = false;
    bool zKey = false;
    bool altKeyDown = false;

    bool lineInProgress = false;
    SurfacePoint lineStart;
    MapPoint freehandLast;
};

} // namespace plotwell
