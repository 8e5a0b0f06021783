#include "platform/scrollingimage.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace plotwell {
namespace {

// Dots per metre of 96 dots per inch, so that points become logical pixels as on a 96-dpi screen.
constexpr int kDotsPerMeter = 3780;
constexpr int kBytesPerPixel = 4;

void describe(QImage& image, double ratio)
{
    image.setDevicePixelRatio(ratio);
    image.setDotsPerMeterX(kDotsPerMeter);
    image.setDotsPerMeterY(kDotsPerMeter);
}

// Room on each side of the window: a quarter of its size, so that a long
// drag moves the pixels once every few dozen steps.
QSize roomAround(QSize size)
{
    return {size.width() / 4 + 16, size.height() / 4 + 16};
}

// Each image of the window holds the block for as long as it lives.
void releaseBlock(void* holder)
{
    std::unique_ptr<std::shared_ptr<std::vector<uchar>>>(static_cast<std::shared_ptr<std::vector<uchar>>*>(holder));
}

} // namespace

void ScrollingImage::make(QSize devicePixels, double ratio)
{
    m_ratio = ratio;
    m_size = devicePixels;
    m_block.reset();
    m_view = QImage(devicePixels, QImage::Format_RGB32);
    describe(m_view, ratio);
}

void ScrollingImage::prepareToDraw()
{
    if (m_block && !m_view.isDetached())
        pointAt(m_at);
}

void ScrollingImage::pointAt(QPoint at)
{
    m_at = at;
    uchar* first = m_block->data() + at.y() * m_stride + at.x() * kBytesPerPixel;
    auto holder = std::make_unique<std::shared_ptr<std::vector<uchar>>>(m_block);
    m_view =
        QImage(first, m_size.width(), m_size.height(), m_stride, QImage::Format_RGB32, releaseBlock, holder.release());
    describe(m_view, m_ratio);
}

void ScrollingImage::scroll(int dx, int dy)
{
    const int w = m_size.width(), h = m_size.height();
    if (std::abs(dx) >= w || std::abs(dy) >= h)
        return; // nothing of what was shown stays
    const QSize room = roomAround(m_size);
    const QPoint middle(room.width(), room.height());
    if (!m_block) {
        // The first scroll: the pixels move once into the middle of a block.
        const QImage owned = m_view;
        m_blockSize = QSize(w + 2 * room.width(), h + 2 * room.height());
        m_stride = qsizetype(m_blockSize.width()) * kBytesPerPixel;
        m_block = std::make_shared<std::vector<uchar>>(std::size_t(m_stride) * std::size_t(m_blockSize.height()));
        pointAt(middle);
        for (int y = 0; y < h; ++y)
            std::memcpy(m_view.scanLine(y), owned.constScanLine(y), std::size_t(w) * kBytesPerPixel);
    }
    const QPoint next = m_at - QPoint(dx, dy);
    if (next.x() >= 0 && next.y() >= 0 && next.x() + w <= m_blockSize.width() && next.y() + h <= m_blockSize.height()) {
        pointAt(next);
        return;
    }
    // Out of room: what stays in sight moves to the middle of the block,
    // rows taken in the order that reads none after it was written.
    const QPoint from = m_at;
    const int rows = h - std::abs(dy);
    const auto bytes = std::size_t(w - std::abs(dx)) * kBytesPerPixel;
    const auto rowAt = [&](QPoint at, int y) {
        return m_block->data() + (at.y() + y) * m_stride + at.x() * kBytesPerPixel;
    };
    const auto move = [&](int y) {
        // Row y of the new window shows row y - dy of the old one, shifted by dx.
        std::memmove(rowAt(middle, y) + std::max(0, dx) * kBytesPerPixel,
                     rowAt(from, y - dy) + std::max(0, -dx) * kBytesPerPixel, bytes);
    };
    const int first = std::max(0, dy);
    const bool downwards = (middle.y() + first) > (from.y() + first - dy); // rows move down the block
    if (downwards) {
        for (int y = first + rows - 1; y >= first; --y)
            move(y);
    } else {
        for (int y = first; y < first + rows; ++y)
            move(y);
    }
    pointAt(middle);
}

} // namespace plotwell
