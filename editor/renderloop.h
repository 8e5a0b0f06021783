#pragma once

namespace plotwell {

class Editor;

// One pass of the endless redraw loop. The window calls it once per frame
// from its frame clock, so pending events run between two passes: the order
// is draw, events, flash step, draw, events, flash step, ... A frame that
// could not differ from the last one, with nothing changed, nothing flashing
// and no scrolled picture waiting to be painted whole, is not drawn again:
// the surface keeps it. True when drawn.
class RenderLoop {
public:
    bool tick(Editor& editor);

private:
    bool m_drawnOnce = false;
};

} // namespace plotwell
