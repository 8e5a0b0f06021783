#pragma once

#include "tools/toolcontext.h"

namespace plotwell {

// Removes every selected line and label, as one step; the others keep their
// order. True when anything was removed.
bool deleteSelected(const ToolContext& context);
// Drop the line or label appended last, of whatever layer, as a step, and
// redraw; an empty array stays empty.
void removeLastLine(const ToolContext& context);
void removeLastLabel(const ToolContext& context);
// Delete on the map: the selection, or when nothing is selected the last
// label with Shift alone, else the last line.
void deleteKey(const ToolContext& context, int shift);

} // namespace plotwell
