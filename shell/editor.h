#pragma once

#include "document/layercontrols.h"
#include "document/mapdocument.h"
#include "palette/palettestate.h"
#include "platform/services.h"
#include "render/displayoptions.h"
#include "render/underlaystate.h"
#include "tools/toolstate.h"
#include "view/viewtransform.h"
#include "view/zoomstrip.h"

#include <cstdint>
#include <functional>

namespace plotwell {

// The selection rectangle shown over the map while the Select tool drags.
struct SelectBox {
    bool visible = false;
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    ColorRGB border;
};

// The drawing surface control: its size in twips (the surface follows it)
// and what it shows over the map.
struct MapControl {
    float width = 6795;
    float height = 7155;
    SelectBox selectBox;
};

// The main window's own state: where its panels stand and the timed shutdown.
struct ShellState {
    float toolsLeft = 6840; // frmTools, twips
    float stuffLeft = 6840; // frmStuff, twips
    std::int16_t closeCount = 0;
    bool endTimerEnabled = false;
    bool wheelHooked = false;
    bool ended = false;
};

// Everything the main window holds, as plain state grouped by subsystem,
// with the services it reaches the outside world through. The behaviour lives
// in the subsystems' functions, which take the editor.
class Editor {
public:
    explicit Editor(const Services& services) : services(services) {}

    Services services;

    MapDocument doc;
    ViewState view;
    ZoomStrip zoom;
    LocationReadout readout;
    LayerControls layers;
    DisplayOptions display;
    UnderlayState underlay;
    ToolState tools;
    PaletteState palette;
    MapControl map;
    ShellState shell;

    // The user's decimal separator, for captions in the locale's ordinary form.
    char decimalSeparator = '.';
    // Gives the keyboard focus to the map surface; set by the window.
    std::function<void()> focusMap = [] {};
};

} // namespace plotwell
