#include "render/bandpainter.h"

#include <QThread>

#include <algorithm>

namespace plotwell {
namespace {

constexpr int kMaxBands = 4;
// No band thinner than this many rows: a small surface is drawn at once.
constexpr int kMinBandRows = 16;

// One box of a surface cleared to the background, and the records that can
// reach into it drawn.
void paintPart(QImageSurface& surface, const FrameSource& source, const BandPainter::Start& start, const QRect& part)
{
    surface.setBackColor(start.background);
    surface.setPenWidth(start.penWidth);
    surface.setBand(part);
    surface.clear();
    MapPart what;
    what.showSelection = false;
    what.within = part;
    drawMap(surface, source, what);
}

} // namespace

BandPainter::BandPainter(int bands)
    : m_bands(bands > 0 ? bands : std::clamp(QThread::idealThreadCount(), 1, kMaxBands))
{
}

QImageSurface& BandPainter::picture()
{
    if (!m_picture)
        m_picture = std::make_unique<QImageSurface>();
    return *m_picture;
}

void BandPainter::addWorkers(std::size_t count)
{
    while (m_workers.size() < count)
        m_workers.push_back(std::make_unique<BandWorker>());
}

void BandPainter::paintWhole(const FrameSource& source, const Start& start)
{
    QImageSurface& first = picture();
    if (first.width() != start.widthTwips || first.height() != start.heightTwips)
        first.resize(start.widthTwips, start.heightTwips);
    const int height = first.image().height();
    const int width = first.image().width();
    const int bands = std::clamp(height / kMinBandRows, 1, m_bands);
    const auto band = [&](int i) {
        const int top = height * i / bands;
        return QRect(0, top, width, height * (i + 1) / bands - top);
    };
    addWorkers(std::size_t(bands - 1));
    for (int i = 1; i < bands; ++i) {
        const QRect rows = band(i);
        m_workers[std::size_t(i - 1)]->start(start.widthTwips, start.heightTwips,
                                             [&source, start, rows](QImageSurface& s) { paintPart(s, source, start, rows); });
    }
    paintPart(first, source, start, band(0));
    first.setBand(first.image().rect());
    for (int i = 1; i < bands; ++i)
        first.copyPart(m_workers[std::size_t(i - 1)]->finish(), band(i));
    first.refresh();
}

void BandPainter::paintParts(const FrameSource& source, const Start& start, const std::vector<QRect>& parts)
{
    // Records drawn whole reach beyond their part: each part is drawn
    // elsewhere, and only the part is copied into the picture.
    addWorkers(1);
    BandWorker& worker = *m_workers.front();
    for (const QRect& part : parts) {
        worker.start(start.widthTwips, start.heightTwips,
                     [&source, start, part](QImageSurface& s) { paintPart(s, source, start, part); });
        picture().copyPart(worker.finish(), part);
    }
    picture().refresh();
}

} // namespace plotwell
