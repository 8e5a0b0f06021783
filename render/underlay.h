#pragma once

namespace plotwell {

class Editor;

// The underlay step of a frame, run right after the surface is cleared and
// only while the underlay is on: the picture, and the mesh over it when the
// tracing paper is on.
void paintUnderlay(Editor& editor);

} // namespace plotwell
