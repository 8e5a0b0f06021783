#pragma once

#include "document/mapdocument.h"

namespace plotwell {

class Editor;

// Removes every selected line and label; the others keep their order. True
// when anything was removed.
bool deleteSelected(MapDocument& doc);
// Drop the line or label appended last, of whatever layer, and redraw; an
// empty array stays empty.
void removeLastLine(Editor& editor);
void removeLastLabel(Editor& editor);
// Delete on the map: the selection, or when nothing is selected the last
// label with Shift alone, else the last line.
void deleteKey(Editor& editor, int shift);

} // namespace plotwell
