#pragma once

#include "platform/imagesurface.h"
#include "render/bandpainter.h"
#include "render/maprenderer.h"
#include "render/picturekey.h"

namespace plotwell {

// The last picture of the map drawn (underlay, lines and labels with that
// frame's display options, every record as if unselected), kept in the
// screen's own image so that a frame costs only what changed:
// - while nothing the picture depends on changed (PictureKey), a frame puts
//   the picture back where the surface was drawn on since the last frame and
//   draws the overlays (the flashing selection) over it;
// - a pan by whole device pixels scrolls the picture and draws only the
//   uncovered strips;
// - anything else paints the whole picture again, on every core.
// The frame is that of drawFrame with selected records drawn over the
// others. After a scroll, single-precision rounding of the new offsets may
// put a few ends of lines one pixel off; a whole picture replaces it once
// the view has stood still for a few frames.
class MapPicture {
public:
    // Frames a scrolled picture is shown before it is painted whole again.
    static constexpr int kSettleFrames = 12;

    explicit MapPicture(int bands = 0) : m_painter(bands) {}

    // Draws one frame on screen and presents it; screen is left with the
    // pen, fill and font that drawFrame leaves.
    void compose(ImageSurface& screen, const FrameSource& source);

    // True while a scrolled picture waits to be painted whole again.
    bool settling() const { return m_scrolled; }
    // The next frame paints the whole picture again.
    void forget() { m_valid = false; }

private:
    // Brings the picture on screen up to the key.
    void update(ImageSurface& screen, const FrameSource& source, const PictureKey& key,
                const BandPainter::Start& start);

    BandPainter m_painter;
    PictureKey m_key;
    const ImageSurface* m_screen = nullptr; // the one the picture lies on
    bool m_valid = false;
    bool m_scrolled = false;
    int m_steadyFrames = 0;
    LastDrawn m_last;
};

} // namespace plotwell
