#pragma once

#include "platform/picturedialog.h"
#include "render/maprenderer.h"
#include "view/view.h"

#include <QSize>
#include <QString>

#include <optional>

namespace plotwell {

// Where the map lies in a picture: the view a frame is drawn with and the
// picture's size in pixels. error tells why there is no such picture.
struct PictureFrame {
    View view;
    QSize pixels;
    QString error;
};

// The frame of a picture of the map: for the current view, the view itself
// at the size of the map surface; for the whole map, the view that fits
// everything the map shows (the visible layers' lines and labels that pass the
// display options and the height filter, and the labels' text) into the
// chosen size, with a small margin, centred.
PictureFrame pictureFrame(const PictureOptions& options, const FrameSource& map);

// The format a picture file is written in, by its name's extension (".png"
// or ".svg" in any case); none for any other name.
std::optional<PictureFormat> pictureFormatOf(const QString& path);

} // namespace plotwell
