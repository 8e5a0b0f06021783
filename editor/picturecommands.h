#pragma once

namespace plotwell {

class Editor;

// File > Export Picture...: asks what to export (the current view, or the
// whole map fitted into a size; PNG or SVG; with the underlay or without) and
// where, then writes a picture of what the map shows: the visible layers
// with the display options, the height filter and stereo as they are. Every
// problem is told in a message box, and nothing is written then.
void exportPictureFromMenu(Editor& editor);

} // namespace plotwell
