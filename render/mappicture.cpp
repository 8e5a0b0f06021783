#include "render/mappicture.h"

#include "render/overlays.h"

#include <cstdlib>

namespace plotwell {
namespace {

// The strips a move by (dx, dy) pixels uncovers on an image of this size.
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

bool MapPicture::update(const FrameSource& source, const PictureKey& key, const BandPainter::Start& start)
{
    if (m_valid && key == m_key) {
        // A scrolled picture is replaced once the view stands still.
        if (!m_scrolled || ++m_steadyFrames < kSettleFrames)
            return false;
        m_painter.paintWhole(source, start);
        m_scrolled = false;
        return true;
    }
    const auto move = m_valid ? scrollBetween(m_key, key) : std::nullopt;
    if (move && std::abs(move->x()) < key.pixels.width() && std::abs(move->y()) < key.pixels.height()) {
        ImageSurface& picture = m_painter.picture();
        picture.scroll(move->x(), move->y());
        m_painter.paintParts(source, start, uncovered(key.pixels, *move));
        m_scrolled = true;
    } else {
        m_painter.paintWhole(source, start);
        m_last = lastDrawn(source);
        m_scrolled = false;
    }
    m_key = key;
    m_valid = true;
    m_steadyFrames = 0;
    return true;
}

void MapPicture::compose(ImageSurface& screen, const FrameSource& source)
{
    const QSize pixels = screen.image().size();
    const BandPainter::Start start{screen.width(), screen.height(), screen.backColor(), screen.state().penWidth};
    const PictureKey key = pictureKey(source, pixels, start.widthTwips, start.heightTwips, start.background,
                                      start.penWidth);
    const bool whole = update(source, key, start);
    screen.restoreFrom(m_painter.picture().image(), whole);
    // The overlays start from the state the whole frame would leave, and leave it so.
    leaveFrameState(screen, source, m_last);
    const ImageSurface::State frameEnd = screen.state();
    drawOverlays(screen, source);
    screen.setState(frameEnd);
    screen.refresh();
}

} // namespace plotwell
