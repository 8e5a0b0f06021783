#pragma once

#include "document/maprecords.h"
#include "tools/toolcontext.h"

namespace plotwell {

// The crossing point of the infinite lines through a1, a2 and through b1, b2,
// in single precision; (-1, -1) when they are parallel. A vertical line is
// taken as a very steep one through a point 1 to the right of its first end.
MapPoint intersectLines(MapPoint a1, MapPoint a2, MapPoint b1, MapPoint b2);

// Tools > Plot Intersection: extends the two selected lines from their nearer
// ends to the point where they meet, as two new lines on the active layer in
// the active colour at the current Z. Tells the user when not exactly two
// lines are selected or when the lines do not meet.
void plotIntersection(const ToolContext& context);

// Tools > Find Label by Keyword: selects every label of any layer whose text
// holds the keyword, in any case; earlier selections stay.
void findLabels(const ToolContext& context);

} // namespace plotwell
