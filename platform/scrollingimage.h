#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>

#include <memory>
#include <vector>

namespace plotwell {

// The pixels of an image surface: an image of the surface's size in device
// pixels that scrolls without moving them. Until it first scrolls the image
// owns its pixels. From then on it is a window into a larger block with room
// on every side, and a scroll moves the window; only when the window runs out
// of room are the pixels moved, back to the middle of the block. A screen
// four thousand pixels wide thus pans by drawing the strips it uncovers,
// never by moving every pixel.
//
// The image of a scrolled window shares the block: a copy of it taken
// outside shows later drawing too (QImage::copy keeps a frame), and keeps
// the block alive for as long as it lives.
class ScrollingImage {
public:
    // A new image of this size and ratio; its pixels are not yet set.
    void make(QSize devicePixels, double ratio);
    QImage& image() { return m_view; }
    const QImage& image() const { return m_view; }
    // Before drawing on image(): should anyone hold a copy of the window,
    // the image lets go of it, so that drawing still reaches the block.
    void prepareToDraw();
    // What the image shows moves by (dx, dy) pixels; the strips it uncovers
    // show anything.
    void scroll(int dx, int dy);

private:
    // Points the image at the window whose top-left pixel in the block is at.
    void pointAt(QPoint at);

    double m_ratio = 1;
    QSize m_size;
    // The block, in rows of m_stride bytes, when the image has scrolled.
    std::shared_ptr<std::vector<uchar>> m_block;
    QSize m_blockSize;
    qsizetype m_stride = 0;
    QPoint m_at;
    QImage m_view;
};

} // namespace plotwell
