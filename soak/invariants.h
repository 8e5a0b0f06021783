#pragma once

#include <QString>

#include <optional>
#include <string>

namespace plotwell {
class Editor;
}

namespace plotwell::soak {

// What must hold after every step, whatever the user did: a finite view; a
// selection count that matches the records' flags; records whose numbers are
// finite singles, scaled at the current scale, on one of the four layers;
// labels without a line break. The first thing broken, or none.
std::optional<std::string> brokenInvariant(const Editor& editor);

// Saves every layer into a folder of its own and loads the files into a fresh
// editor: each layer must come back with the same records in the same order,
// as the files hold them (seven significant digits), labels text for text.
std::optional<std::string> roundTripFault(const Editor& editor, const QString& folder);

} // namespace plotwell::soak
