#pragma once

#include "soak/random.h"

#include <QByteArray>
#include <QString>

namespace plotwell::soak {

// Files the user hands the editor, made on demand in the run's folder from a
// recipe, one text such as "map 3 1234 zone.txt":
//   map KIND SEED NAME   a map text file of a kind (MapKind), from a seed
//   zone KIND SEED NAME  NAME and, beside it, some of NAME_1 .. NAME_3
//   pic KIND SEED NAME   a picture, or something named like one (PictureKind)
//   keep NAME            whatever is there now, maybe a file saved earlier
//   dir NAME             a folder
//   gone NAME            a file in a folder that does not exist
//   ro NAME              an existing file made read-only
// The same recipe in the same folder makes the same bytes, so a replayed run
// reads what the first one read.
enum class MapKind {
    Plain,
    Large, // enough lines for the hit-test grid
    Extreme, // numbers at the ends of the single range
    SingleLimit, // thousands of lines near 2.5E+38
    StopsEarly, // a record that does not convert, in the middle
    Binary, // random bytes with NUL among them
    LineEnds, // CR, LF, CR LF, blanks, extra fields, lines that are not records
    LongLine, // a line of more than 1 MiB
    Empty,
    Utf16, // a plain map saved as UTF-16
    Mutated, // a plain map with bytes changed, added and dropped
    OddLabels, // label texts with commas, high bytes, tabs, 10,000 characters
    Count
};
enum class PictureKind { Png, Bmp, Jpeg, Truncated, Garbage, Empty, Forged, MapText, Count };

// Makes what the recipe names and returns its path; empty for a recipe it cannot read.
QString makeFile(const QString& folder, const QString& recipe);

// The bytes of a map file of a kind, from a seed.
QByteArray mapText(MapKind kind, std::uint64_t seed);

} // namespace plotwell::soak
