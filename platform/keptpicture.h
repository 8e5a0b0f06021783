#pragma once

#include "platform/drawnarea.h"

#include <QImage>

namespace plotwell {

// A picture kept in the very image it is shown in: whatever is drawn over it
// (the flashing selection, the crosshair's text) first saves the pixels it
// covers, tile by tile, and putting the picture back copies just the tiles
// drawn over. A frame that changes little thus costs little however large
// the image, and the picture never has to be copied whole onto the screen.
// Saved tiles stay saved for as long as the picture stays the same, so that
// a selection flashing over the same tiles frame after frame saves them once.
class KeptPicture {
public:
    // Nothing is kept; tiles are for an image of this size.
    void reset(QSize imageSize);
    // What the image shows from now on is the picture.
    void keep();
    // The picture is gone (the image was cleared, say).
    void lose();
    // The image is drawn on while no picture is kept: the picture that will
    // be kept next is another, and the tiles saved of the last one are of no use.
    void changed() { m_saved.clear(); }
    bool kept() const { return m_kept; }
    // Before drawing over a box of pixels of image: saves what the picture
    // has there, where that is not saved yet.
    void saveUnder(const QImage& image, const QRect& box);
    // Puts the picture back wherever it was drawn over and adds those parts
    // to shown; no longer kept afterwards. False when no picture was kept.
    bool restore(QImage& image, DrawnArea& shown);

private:
    bool m_kept = false;
    DrawnArea m_saved; // tiles of the picture saved in m_under
    DrawnArea m_drawn; // tiles drawn over since the picture was kept
    QImage m_under;
};

} // namespace plotwell
