#pragma once

#include "platform/drawingsurface.h"
#include "render/underlaystate.h"

#include <QImage>
#include <QRectF>

namespace plotwell {

// Where the underlay picture is painted on a surface of the given size, in
// twips: from the top-left corner, stretched over the whole surface, or with
// "Maintain Aspect" filling the surface's width (its height for a portrait
// picture). Empty when a picture with no height keeps its proportions.
QRectF underlayTarget(const UnderlayState& underlay, float surfaceWidth, float surfaceHeight);

// The tracing paper: 1024 x 768 pixels of 2 x 2 cells, white and black, the
// top-left cell white. ORed over the picture it whitens every other cell.
const QImage& meshPicture();

// The underlay step of a frame, run right after the surface is cleared and
// only while the underlay is on: the picture, and the mesh over it, unscaled
// from the top-left corner, when the tracing paper is on.
void paintUnderlay(DrawingSurface& surface, const UnderlayState& underlay);

} // namespace plotwell
