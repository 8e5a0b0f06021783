#pragma once

#include "document/mapreader.h"

#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>
#include <optional>

namespace plotwell {

class Editor;
class LayerStep;

// The folder of a path up to and including its last separator, and the name
// after it; empty when the path has no separator. Paths are in the platform's
// native form, so the separator is "\" on Windows and "/" elsewhere.
QString folderOf(const QString& path);
QString fileNameOf(const QString& path);

// Loads one file into one layer: makes it active, records the path, caption
// and folder, reads the records, re-applies the zoom and, for the base layer,
// fits the view. It neither clears the layer nor asks anything.
ReadResult openMapFile(Editor& editor, const QString& path, std::int16_t layer);
// Removes a layer's records, as part of a step, and resets its caption; the
// file name stays.
void clearLayer(LayerStep& step, std::int16_t layer);
// File > Open EQ Map File > As Base Layer / As Layer n.
void loadLayerFromMenu(Editor& editor, std::int16_t layer);
// Files dropped on the map, or named on the command line, fill the layers
// that have no file yet. A zone's base file alone, dropped while no layer has
// a file, brings the rest of its zone: see zoneFiles.
void dropFiles(Editor& editor, const QStringList& paths);

// A zone's map is a base file such as zone.txt with zone_1.txt, zone_2.txt
// and zone_3.txt beside it. For a base file with at least one such sibling,
// the files of layers 0 to 3 (empty where a sibling is missing); else none.
std::optional<std::array<QString, kLayerCount>> zoneFiles(const QString& basePath);

} // namespace plotwell
