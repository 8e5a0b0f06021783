#pragma once

#include "document/maprecords.h"

namespace plotwell {

// What an editing tool shows over the map while it works, drawn by every
// frame over the kept picture: the selection where a drag would put it, and
// a ring on the line end the pointer would snap to.
struct EditMarks {
    bool dragging = false;
    float dx = 0; // world units the selection is dragged by
    float dy = 0;
    bool ringShown = false;
    MapPoint ring; // world x, y of the end
};

} // namespace plotwell
