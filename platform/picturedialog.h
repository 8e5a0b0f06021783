#pragma once

#include <QSize>

namespace plotwell {

// The kinds of picture file the map is exported as: a PNG image, or an SVG
// drawing whose lines and labels stay sharp at any size.
enum class PictureFormat { Png, Svg };

// Which part of the map a picture shows: the map surface as it is, or the
// whole map fitted into a size.
enum class PictureArea { CurrentView, WholeMap };

// The largest width or height of a picture, in pixels.
constexpr int kMaxPictureSide = 32768;

// What File > Export Picture... writes.
struct PictureOptions {
    PictureArea area = PictureArea::WholeMap;
    QSize size{2048, 2048}; // pixels, for the whole map
    PictureFormat format = PictureFormat::Png;
    bool underlay = true; // the underlay too, when the map shows one
};

// The export dialog. Like the file dialog, the choices persist between uses.
class PictureDialog {
public:
    virtual ~PictureDialog() = default;

    PictureOptions options;

    // Shows the choices; viewSize is the map surface's size in pixels and
    // underlayShown whether the map shows an underlay now. False when the
    // user cancels.
    virtual bool show(QSize viewSize, bool underlayShown) = 0;
};

} // namespace plotwell
