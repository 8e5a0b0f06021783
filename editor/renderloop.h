#pragma once

namespace plotwell {

class Editor;

// One pass of the endless redraw loop. The window calls it once per frame
// from its frame clock, so pending events run between two passes: the order
// is draw, events, flash step, draw, events, flash step, ...
class RenderLoop {
public:
    void tick(Editor& editor);

private:
    bool m_drawnOnce = false;
};

} // namespace plotwell
