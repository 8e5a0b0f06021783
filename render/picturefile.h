#pragma once

#include "document/colorrgb.h"
#include "platform/picturedialog.h"
#include "render/maprenderer.h"
#include "render/pictureframe.h"

#include <QString>

namespace plotwell {

// Draws one frame of the map into a picture file, with the same renderer as
// the screen, at the frame's view and size, on the given background: a PNG
// image, or an SVG drawing whose lines are lines and whose labels are text.
// Selected records are drawn in their own colours, as if not selected, since
// the flashing of the selection is no part of the map. The file is replaced
// only once the whole picture was written, so a failure leaves no partial
// file. Returns why it failed, or an empty text.
QString writePicture(const QString& path, PictureFormat format, const PictureFrame& frame, const FrameSource& map,
                     ColorRGB background);

} // namespace plotwell
