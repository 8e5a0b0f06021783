#pragma once

#include "document/mapdocument.h"

namespace plotwell {

class Editor;

// Removes every selected line and label, as one step; the others keep their
// order. True when anything was removed.
bool deleteSelected(Editor& editor);
// Drop the line or label appended last, of whatever layer, as a step, and
// redraw; an empty array stays empty.
void removeLastLine(Editor& editor);
void removeLastLabel(Editor& editor);
// Delete on the map: the selection, or when nothing is selected the last
// label with Shift alone, else the last line.
void deleteKey(Editor& editor, int shift);

} // namespace plotwell
