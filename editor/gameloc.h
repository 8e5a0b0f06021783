#pragma once

#include "document/maprecords.h"

#include <optional>
#include <string_view>

namespace plotwell {

// The game answers /loc with a message that its log writes as
//     [Mon Nov 23 18:00:00 2026] Your Location is 1234.56, -789.01, 2.34
// The first two numbers are what the location read-out shows for that point,
// the negated world y and then the negated world x, as a location typed for
// the crosshair's shift is read; the third is the height.
//
// The world point (x, y and z) of such a line, given without its line end;
// none for any other line, including a message that only quotes one (a
// player's chat), for numbers that are garbled and for numbers beyond what
// a single holds. The log's Windows-1252 bytes are one a character and the
// message is ASCII, so the line is matched as bytes.
std::optional<MapPoint> parseLocLine(std::string_view line);

// Whether the line is the game's word that the player entered a zone:
//     [Mon Nov 23 18:00:00 2026] You have entered The Plane of Knowledge.
// The same words about an area inside a zone ("You have entered an area
// where levitation effects do not function.") are no zone entry.
bool isZoneEntryLine(std::string_view line);

} // namespace plotwell
