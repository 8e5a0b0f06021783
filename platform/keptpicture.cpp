#include "platform/keptpicture.h"

#include <cstring>

namespace plotwell {
namespace {

// Rows or parts of rows of one image copied into another of the same format.
void copyRect(QImage& to, const QImage& from, const QRect& r)
{
    const auto bytes = std::size_t(r.width()) * 4;
    for (int y = r.top(); y <= r.bottom(); ++y)
        std::memcpy(to.scanLine(y) + r.left() * 4, from.constScanLine(y) + r.left() * 4, bytes);
}

} // namespace

void KeptPicture::reset(QSize imageSize)
{
    m_kept = false;
    m_saved.reset(imageSize);
    m_drawn.reset(imageSize);
    if (m_under.size() != imageSize)
        m_under = QImage();
}

void KeptPicture::keep()
{
    m_drawn.clear();
    m_kept = true;
}

void KeptPicture::lose()
{
    m_saved.clear();
    m_drawn.clear();
    m_kept = false;
}

void KeptPicture::saveUnder(const QImage& image, const QRect& box)
{
    if (!m_kept)
        return;
    m_saved.addNew(box, [&](const QRect& tiles) {
        // Made when first needed: most surfaces never keep a picture.
        if (m_under.size() != image.size())
            m_under = QImage(image.size(), QImage::Format_RGB32);
        copyRect(m_under, image, tiles);
    });
    m_drawn.add(box);
}

bool KeptPicture::restore(QImage& image, DrawnArea& shown)
{
    if (!m_kept)
        return false;
    m_drawn.forEachRect([&](const QRect& tiles) { copyRect(image, m_under, tiles); });
    shown.addArea(m_drawn);
    m_drawn.clear();
    m_kept = false;
    return true;
}

} // namespace plotwell
