#pragma once

#include "document/maprecords.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace plotwell {
class Editor;
}

namespace plotwell::soak {

// Watches the edit history as the steps go. The history gives each layer a
// state number that every edit of the layer changes and undoing the edit
// gives back, so a layer must hold the same records whenever it is in the
// same state: after any undo it saves as it did before the edit, after a
// redo as it did after it, and no edit of the records goes past the history.
class HistoryWatch {
public:
    // The first layer that holds other records than it did the last time it
    // was in its state, if any.
    std::optional<std::string> check(const Editor& editor);

private:
    std::map<std::pair<int, std::uint64_t>, std::uint64_t> m_seen; // (layer, state): the records' fingerprint
    std::uint64_t m_revision = ~std::uint64_t(0);
    std::array<std::uint64_t, kLayerCount> m_states{};
};

// Undoes every step, redoes every step, then undoes back to where the history
// stood, checking the records and the watch after each: every layer must then
// save as it did, label text for label text, with the same file, the same
// records selected and the same steps to undo and redo. Undoing ends a
// gesture, so the caller waits until none is in progress, unless nothing
// follows. The first thing found broken, if any.
std::optional<std::string> undoRedoFault(Editor& editor, HistoryWatch& watch);

} // namespace plotwell::soak
