#pragma once

#include "tools/toolcontext.h"

#include <QString>

#include <array>
#include <cstddef>
#include <optional>

namespace plotwell {

// Moves every selected line (both ends) and label by (dx, dy, dz) world
// units as one step, "Move"; false, and nothing changed, when nothing would
// move or a moved point would be beyond what a map file holds.
bool moveSelection(const ToolContext& context, float dx, float dy, float dz);

// A distance typed as the game writes places: "y, x" or "y, x, z", the
// read-out's order and signs (y and x negated, z as it is). None unless it is
// two or three numbers that singles hold.
std::optional<std::array<float, 3>> parseMoveDistance(const QString& typed);

// Edit > Move Selection...: asks for the distance and moves the selection by it.
void moveSelectionFromPrompt(const ToolContext& context);
QString moveSelectionPrompt();

// The one selected label, when exactly one is.
std::optional<std::size_t> soleSelectedLabel(const MapDocument& doc);

// The size codes Label Properties offers: those the map format knows.
constexpr std::int16_t kLabelSizes[] = {0, 1, 2, 3};

// Label Properties... for the label at index: its text (read as the Label
// tool reads a caption: up to a line break, spaces as "_", and a comma ends
// it), its size code and its height, as one step.
void editLabelProperties(const ToolContext& context, std::size_t index);

} // namespace plotwell
