#include "render/mappicture.h"

#include "render/overlays.h"

#include <cstdlib>

namespace plotwell {
namespace {

// The strips a move by (dx, dy) device pixels uncovers on an image of this size.
std::vector<QRect> uncovered(QSize size, QPoint move)
{
    std::vector<QRect> strips;
    const int w = size.width(), h = size.height();
    if (move.x() > 0)
        strips.emplace_back(0, 0, move.x(), h);
    else if (move.x() < 0)
        strips.emplace_back(w + move.x(), 0, -move.x(), h);
    if (move.y() > 0)
        strips.emplace_back(0, 0, w, move.y());
    else if (move.y() < 0)
        strips.emplace_back(0, h + move.y(), w, -move.y());
    return strips;
}

} // namespace

void MapPicture::update(ImageSurface& screen, const FrameSource& source, const PictureKey& key,
                        const BandPainter::Start& start)
{
    if (m_valid && key == m_key) {
        // A scrolled picture is replaced once the view stands still.
        if (!m_scrolled || ++m_steadyFrames < kSettleFrames)
            return;
        m_painter.paintWhole(screen, source, start);
        m_scrolled = false;
        return;
    }
    const auto move = m_valid ? scrollBetween(m_key, key) : std::nullopt;
    if (move && std::abs(move->x()) < key.pixels.width() && std::abs(move->y()) < key.pixels.height()) {
        screen.scroll(move->x(), move->y());
        m_painter.paintParts(screen, source, start, uncovered(key.pixels, *move));
        m_scrolled = true;
    } else {
        m_painter.paintWhole(screen, source, start);
        m_last = lastDrawn(source);
        m_scrolled = false;
    }
    m_key = key;
    m_valid = true;
    m_steadyFrames = 0;
}

void MapPicture::compose(ImageSurface& screen, const FrameSource& source)
{
    // The picture comes back where the last frame drew over it; if the
    // screen lost it since, or it lay on another screen, it is painted anew.
    m_valid = screen.restorePicture() && m_valid && m_screen == &screen;
    m_screen = &screen;
    const ImageSurface::State before = screen.state();
    const BandPainter::Start start{screen.width(), screen.height(), screen.pixelRatio(), screen.backColor(),
                                   before.penWidth};
    const PictureKey key = pictureKey(source, screen.image().size(), start.ratio, start.widthTwips, start.heightTwips,
                                      start.background, start.penWidth);
    update(screen, source, key, start);
    screen.keepPicture();
    // The overlays start from the state the whole frame would leave, and leave it so.
    screen.setState(before);
    leaveFrameState(screen, source, m_last);
    const ImageSurface::State frameEnd = screen.state();
    drawOverlays(screen, source);
    screen.setState(frameEnd);
    screen.refresh();
}

} // namespace plotwell
