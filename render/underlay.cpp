#include "render/underlay.h"

namespace plotwell {
namespace {

constexpr float kTwipsPerPixel = 15;

QImage makeMesh()
{
    QImage mesh(1024, 768, QImage::Format_RGB32);
    for (int y = 0; y < mesh.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(mesh.scanLine(y));
        for (int x = 0; x < mesh.width(); ++x)
            row[x] = ((x / 2 + y / 2) % 2 == 0) ? qRgb(255, 255, 255) : qRgb(0, 0, 0);
    }
    return mesh;
}

// A picture's whole area in twips, at 15 twips to its pixel.
QRectF wholeOf(const QImage& picture)
{
    return QRectF(0, 0, float(picture.width()) * kTwipsPerPixel, float(picture.height()) * kTwipsPerPixel);
}

} // namespace

QRectF underlayTarget(const UnderlayState& underlay, float surfaceWidth, float surfaceHeight)
{
    if (!underlay.aspectChecked)
        return QRectF(0, 0, surfaceWidth, surfaceHeight);
    const float w = float(underlay.picture.width());
    const float h = float(underlay.picture.height());
    if (!(h > 0))
        return QRectF();
    if (h > w) // portrait: it fills the surface's height
        return QRectF(0, 0, surfaceHeight * w / h, surfaceHeight);
    return QRectF(0, 0, surfaceWidth, surfaceWidth * h / w);
}

const QImage& meshPicture()
{
    static const QImage mesh = makeMesh();
    return mesh;
}

void paintUnderlay(DrawingSurface& surface, const UnderlayState& underlay)
{
    const QRectF target = underlayTarget(underlay, surface.width(), surface.height());
    if (!target.isEmpty() && !underlay.picture.isNull())
        surface.paintPicture(underlay.picture, target, wholeOf(underlay.picture), RasterOp::Copy);
    if (underlay.tracingPaperOn) {
        // Unscaled: as much of the mesh as the surface has room for.
        const QRectF area(0, 0, surface.width(), surface.height());
        surface.paintPicture(meshPicture(), area, area, RasterOp::Or);
    }
}

} // namespace plotwell
