#pragma once

#include "platform/drawingsurface.h"

#include <QRect>

#include <memory>

class QImage;

namespace plotwell {

// A drawing surface that is an image of pixels, on which frames are composed
// from a picture kept elsewhere: it can be drawn on one band of rows at a
// time, knows where it was drawn on since a kept picture was last put back,
// scrolls by whole pixels, and takes parts of other pictures.
class ImageSurface : public DrawingSurface {
public:
    // Everything the drawing operations leave for the ones that follow.
    struct State {
        ColorRGB pen;
        ColorRGB fill;
        int penWidth = 1;
        float textX = 0;
        float textY = 0;
        float fontPoints = 8.25f;
        bool bold = false;
    };

    // The persistent image, with everything drawn so far.
    virtual const QImage& image() const = 0;

    // Works on one band of the image, a box of pixels: clear fills only the
    // band, and drawing that cannot reach into it is left out. What is drawn
    // is drawn whole, as on the whole image, so that inside the band the
    // pixels are exactly those that drawing everything gives (a clip
    // rectangle would cut lines at its edges and round them otherwise);
    // outside it they are of no use. The whole image at first and after a resize.
    virtual void setBand(const QRect& pixels) = 0;
    virtual QRect band() const = 0;

    // Puts picture, of the image's size, back wherever the image was drawn
    // on since it was last put back (everywhere with whole).
    virtual void restoreFrom(const QImage& picture, bool whole = false) = 0;
    // Moves the whole image by whole pixels; the uncovered strips keep what
    // was there, to be drawn again.
    virtual void scroll(int dx, int dy) = 0;
    // A box of pixels of picture, of the image's size, replaces that of the image.
    virtual void copyPart(const QImage& picture, const QRect& part) = 0;

    virtual State state() const = 0;
    virtual void setState(const State& state) = 0;
};

// A new image surface of this size, in twips.
std::unique_ptr<ImageSurface> makeImageSurface(float widthTwips, float heightTwips);

} // namespace plotwell
