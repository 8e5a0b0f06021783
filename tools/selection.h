#pragma once

#include "document/colorrgb.h"
#include "document/mapdocument.h"
#include "tools/lineindex.h"
#include "view/displayoptions.h"
#include "view/view.h"

namespace plotwell {

// The selection rectangle shown over the map while the Select tool drags,
// in surface twips.
struct SelectBox {
    bool visible = false;
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    ColorRGB border; // set by each frame drawn, from the map's background
};

// The hit tolerance, in world units at every zoom level.
constexpr float kHitTolerance = 2.0f;

// Whether a click at world point (x, y) hits the line. Differences are
// rounded to single precision before they are compared with the tolerance.
// The test for a steep line looks within the tolerance across its x, one for
// a flat line within the tolerance across its y; any other line is hit where
// the slope from its first end to the point differs from its own slope by
// less than the tolerance, inside its bounding box. On the vertical through
// the first end that slope does not exist: there the point counts as on the
// slope when it lies within the tolerance of the first end, and the box must
// still hold it, so a line whose ends coincide is never hit.
bool lineHitAt(const MapLine& line, float x, float y);

// The selection lives in the records' own flags; this adds the rectangle and
// what makes hit testing quick on large maps.
class Selection {
public:
    SelectBox box;

    // Toggles (or, without toggle, sets) the selection of every record a
    // click at the surface point (x, y) hits: lines of any layer while lines
    // are shown, labels of the active layer while labels are shown, both
    // subject to the height filter (labels within the tolerance of z). True
    // when anything was hit.
    bool hitTestAt(MapDocument& doc, const View& view, const DisplayOptions& display, float x, float y, float z,
                   bool toggle);
    // Selects every record of the active layer with a point inside the
    // rectangle, shown or not, subject to the height filter; clears nothing.
    void selectInBox(MapDocument& doc, const View& view, const DisplayOptions& display) const;
    // Shows the rectangle spanned by a and b.
    void showSelectBox(SurfacePoint a, SurfacePoint b);
    // The grid of lines the hit test uses, for other searches near a point.
    LineIndex& lineIndex() { return m_index; }

private:
    LineIndex m_index;
};

} // namespace plotwell
