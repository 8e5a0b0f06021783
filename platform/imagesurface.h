#pragma once

#include "platform/drawingsurface.h"

#include <QRect>

#include <memory>

class QImage;

namespace plotwell {

// A drawing surface that is an image of pixels, on which frames are composed
// from a picture kept in the image itself: it can be drawn on one band of
// rows at a time, puts the picture back wherever it was drawn over since it
// was kept, scrolls by whole pixels, and takes parts of other pictures.
//
// The image has the screen's device pixels: pixelRatio() of them to a
// logical pixel (15 twips) each way, so that lines and text are as sharp as
// the screen shows them. Drawing still takes twips and pen widths in logical
// pixels; every box of pixels below (bands, scrolls, parts) is in device pixels.
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

    // What the image shows now is kept as the picture: whatever is drawn
    // from now on saves first what it covers.
    virtual void keepPicture() = 0;
    // Puts the kept picture back wherever it was drawn over, and keeps no
    // picture any more. False when there is none to put back: none was
    // kept, or the image was cleared, resized or scrolled since.
    virtual bool restorePicture() = 0;
    // Moves the whole image by whole pixels; the uncovered strips show
    // anything, to be drawn again.
    virtual void scroll(int dx, int dy) = 0;
    // A box of pixels of picture, of the image's size, replaces that of the image.
    virtual void copyPart(const QImage& picture, const QRect& part) = 0;

    virtual State state() const = 0;
    virtual void setState(const State& state) = 0;

    // Device pixels to a logical pixel. A new ratio makes the image anew at
    // the same size in twips, its drawing scaled into it.
    virtual double pixelRatio() const = 0;
    virtual void setPixelRatio(double ratio) = 0;
};

// A new image surface of this size, in twips, at this many device pixels to a logical one.
std::unique_ptr<ImageSurface> makeImageSurface(float widthTwips, float heightTwips, double ratio = 1);

} // namespace plotwell
