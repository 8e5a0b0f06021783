#include "render/pictureframe.h"

#include "document/ansitext.h"
#include "platform/textcache.h"
#include "platform/twips.h"
#include "render/labelfont.h"
#include "view/displayoptions.h"

#include <QFileInfo>
#include <QFontMetricsF>
#include <QImage>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace plotwell {
namespace {

// The world box of the points a frame draws, in double precision so that
// its width cannot overflow.
struct WorldBox {
    double minX = std::numeric_limits<double>::infinity();
    double maxX = -minX;
    double minY = minX;
    double maxY = -minX;

    bool empty() const { return minX > maxX; }
    void take(const MapPoint& p)
    {
        minX = std::min(minX, double(p.x));
        maxX = std::max(maxX, double(p.x));
        minY = std::min(minY, double(p.y));
        maxY = std::max(maxY, double(p.y));
    }
};

bool shown(const FrameSource& map, std::int16_t layer, float z)
{
    return layer >= 0 && layer < kLayerCount && map.display.layerChecked[std::size_t(layer)]
        && !outsideHeightRange(map.display, z, map.view.currentZ);
}

std::vector<const MapLabel*> shownLabels(const FrameSource& map)
{
    std::vector<const MapLabel*> labels;
    if (map.display.showLabels) {
        for (const MapLabel& label : map.doc.labels())
            if (shown(map, label.layer, label.pos.z))
                labels.push_back(&label);
    }
    return labels;
}

WorldBox shownBox(const FrameSource& map, const std::vector<const MapLabel*>& labels)
{
    WorldBox box;
    if (map.display.showLines) {
        for (const MapLine& line : map.doc.lines()) {
            // A line is drawn or hidden by its first end's height.
            if (shown(map, line.layer, line.p1.z)) {
                box.take(line.p1);
                box.take(line.p2);
            }
        }
    }
    for (const MapLabel* label : labels)
        box.take(label->pos);
    return box;
}

// The room a label's text takes right of and below its anchor, in pixels.
struct TextRoom {
    double width = 0;
    double height = 0;
};

std::vector<TextRoom> textRooms(const std::vector<const MapLabel*>& labels, float scale)
{
    std::vector<TextRoom> rooms;
    if (labels.empty())
        return rooms;
    // Measured at 96 dots per inch, as the surfaces draw.
    QImage device(1, 1, QImage::Format_RGB32);
    device.setDotsPerMeterX(3780);
    device.setDotsPerMeterY(3780);
    TextCache fonts;
    fonts.setFont(labelFontPoints(scale), false, &device);
    const QFontMetricsF metrics(fonts.font(), &device);
    rooms.reserve(labels.size());
    for (const MapLabel* label : labels)
        rooms.push_back({metrics.horizontalAdvance(fromAnsi(label->text)), metrics.height()});
    return rooms;
}

PictureFrame fitWholeMap(const FrameSource& map, QSize pixels)
{
    PictureFrame frame{map.view, pixels, {}};
    const std::vector<const MapLabel*> labels = shownLabels(map);
    const WorldBox box = shownBox(map, labels);
    if (box.empty()) {
        frame.error = QStringLiteral("There is nothing to fit into the picture: the map shows no line or label.");
        return frame;
    }
    const double boxWidth = box.maxX - box.minX;
    const double boxHeight = box.maxY - box.minY;
    if (boxWidth == 0 && boxHeight == 0) {
        frame.error = QStringLiteral("The map cannot be fitted into a picture: everything it shows lies at one point.");
        return frame;
    }

    const double width = pixels.width();
    const double height = pixels.height();
    const double margin = std::min({16.0, width / 8, height / 8});
    const double roomX = width - 2 * margin;
    const double roomY = height - 2 * margin;
    // Pixels per world unit that fit the points.
    const double inf = std::numeric_limits<double>::infinity();
    const double pointsFit = std::min(boxWidth > 0 ? roomX / boxWidth : inf, boxHeight > 0 ? roomY / boxHeight : inf);
    // Labels' text reaches right and down from their anchors: the scale shrinks
    // so that it fits too, but never below half, for a text wider than the
    // picture. The font shrinks with the scale, so the text fits all the more.
    double fit = pointsFit;
    const std::vector<TextRoom> rooms = textRooms(labels, float(fit * kTwipsPerPixel));
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const double dx = double(labels[i]->pos.x) - box.minX;
        const double dy = double(labels[i]->pos.y) - box.minY;
        if (dx > 0 && roomX > rooms[i].width)
            fit = std::min(fit, (roomX - rooms[i].width) / dx);
        if (dy > 0 && roomY > rooms[i].height)
            fit = std::min(fit, (roomY - rooms[i].height) / dy);
    }
    fit = std::max(fit, pointsFit / 2);

    // The box of everything drawn, centred.
    double usedX = boxWidth * fit;
    double usedY = boxHeight * fit;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        usedX = std::max(usedX, (double(labels[i]->pos.x) - box.minX) * fit + rooms[i].width);
        usedY = std::max(usedY, (double(labels[i]->pos.y) - box.minY) * fit + rooms[i].height);
    }
    const double left = (width - std::min(usedX, roomX)) / 2;
    const double top = (height - std::min(usedY, roomY)) / 2;

    View& view = frame.view;
    view.currentScale = float(fit * kTwipsPerPixel);
    view.offsetX = float((left - box.minX * fit) * kTwipsPerPixel);
    view.offsetY = float((top - box.minY * fit) * kTwipsPerPixel);
    view.mapWidth = twips(width);
    view.mapHeight = twips(height);
    return frame;
}

} // namespace

PictureFrame pictureFrame(const PictureOptions& options, const FrameSource& map)
{
    if (options.area == PictureArea::CurrentView) {
        const QSize pixels(std::max(1, px(map.view.mapWidth)), std::max(1, px(map.view.mapHeight)));
        return {map.view, pixels, {}};
    }
    const QSize size = options.size;
    if (size.width() < 1 || size.height() < 1 || size.width() > kMaxPictureSide || size.height() > kMaxPictureSide) {
        return {map.view, size,
                QStringLiteral("A picture's width and height must each be from 1 to %1 pixels.").arg(kMaxPictureSide)};
    }
    return fitWholeMap(map, size);
}

std::optional<PictureFormat> pictureFormatOf(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("png"))
        return PictureFormat::Png;
    if (suffix == QLatin1String("svg"))
        return PictureFormat::Svg;
    return std::nullopt;
}

} // namespace plotwell
