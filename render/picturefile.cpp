#include "render/picturefile.h"

#include "platform/imagesurface.h"
#include "platform/svgsurface.h"
#include "platform/twips.h"
#include "render/underlay.h"

#include <QFileInfo>
#include <QImageWriter>
#include <QSaveFile>

#include <array>

namespace plotwell {
namespace {

void drawPicture(DrawingSurface& surface, const FrameSource& source, ColorRGB background)
{
    surface.setBackColor(background);
    // The map surface holds a pen of 2 pixels once it has drawn a line, and
    // the label markers keep it.
    surface.setPenWidth(2);
    drawFrame(surface, source);
}

// The same pixels with a colour table, when the image has at most 256
// colours, as a map without an underlay has: PNG writes a quarter of the
// bytes, in a fraction of the time. Otherwise the image itself.
QImage withFewColours(const QImage& image)
{
    if (image.format() != QImage::Format_RGB32)
        return image;
    // Colours by a hash of their value; a pixel of this format is never 0,
    // which marks an empty slot.
    std::array<QRgb, 1024> keys{};
    std::array<uchar, 1024> indices{};
    QList<QRgb> table;
    QImage indexed(image.size(), QImage::Format_Indexed8);
    QRgb last = 0;
    uchar lastIndex = 0;
    for (int y = 0; y < image.height(); ++y) {
        const auto* in = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        uchar* out = indexed.scanLine(y);
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = in[x];
            if (pixel != last) {
                std::size_t slot = (pixel * 2654435761u) >> 22;
                while (keys[slot] != 0 && keys[slot] != pixel)
                    slot = (slot + 1) % keys.size();
                if (keys[slot] == 0) {
                    if (table.size() == 256)
                        return image;
                    keys[slot] = pixel;
                    indices[slot] = uchar(table.size());
                    table.append(pixel);
                }
                last = pixel;
                lastIndex = indices[slot];
            }
            out[x] = lastIndex;
        }
    }
    indexed.setColorTable(table);
    indexed.setDotsPerMeterX(image.dotsPerMeterX());
    indexed.setDotsPerMeterY(image.dotsPerMeterY());
    return indexed;
}

QString writePng(QSaveFile& file, QSize pixels, const FrameSource& source, ColorRGB background)
{
    // Tried first, so that a size too large for memory is told rather than
    // drawn on nothing.
    if (QImage(pixels, QImage::Format_RGB32).isNull())
        return QStringLiteral("there is not enough memory for a picture of %1 x %2 pixels")
            .arg(pixels.width())
            .arg(pixels.height());
    const std::unique_ptr<ImageSurface> surface = makeImageSurface(twips(pixels.width()), twips(pixels.height()));
    drawPicture(*surface, source, background);
    QImageWriter writer(&file, "png");
    if (!writer.write(withFewColours(surface->image())))
        return writer.errorString();
    return {};
}

// The layers one after another, each a group named as its check box is, so
// that a drawing program shows the map's layers; the underlay beneath them.
QString writeSvg(QSaveFile& file, QSize pixels, const FrameSource& source, ColorRGB background, const QString& title)
{
    SvgSurface surface(file, pixels, title);
    surface.setBackColor(background);
    surface.setPenWidth(2);
    surface.clear();
    if (source.underlay.underlayOn)
        paintUnderlay(surface, source.underlay);
    UnderlayState noUnderlay;
    noUnderlay.underlayOn = false;
    for (std::size_t layer = 0; layer < std::size_t(kLayerCount); ++layer) {
        if (!source.display.layerChecked[layer])
            continue;
        DisplayOptions only = source.display;
        only.layerChecked = {};
        only.layerChecked[layer] = true;
        surface.beginLayer(source.doc.homes[layer].caption);
        drawMap(surface, {source.doc, source.view, only, noUnderlay}, MapPart{});
    }
    if (source.player) {
        surface.beginLayer(QStringLiteral("Player"));
        drawPlayerMarker(surface, source.view, *source.player);
    }
    if (!surface.finish())
        return file.errorString();
    return {};
}

} // namespace

QString writePicture(const QString& path, PictureFormat format, const PictureFrame& frame, const FrameSource& map,
                     ColorRGB background)
{
    // The picture's own copy of the records: at its scale, none selected.
    MapDocument doc = map.doc;
    doc.clearSelection();
    if (frame.view.currentScale != map.view.currentScale)
        doc.rescale(frame.view.currentScale);
    const FrameSource source{doc, frame.view, map.display, map.underlay};

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    if (format == PictureFormat::Png) {
        const QString error = writePng(file, frame.pixels, source, background);
        if (!error.isEmpty())
            return error;
    } else {
        const QString error = writeSvg(file, frame.pixels, source, background, QFileInfo(path).completeBaseName());
        if (!error.isEmpty())
            return error;
    }
    if (!file.commit())
        return file.errorString();
    return {};
}

} // namespace plotwell
