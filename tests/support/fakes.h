#pragma once

#include "editor/editor.h"
#include "testing/fakes.h"
#include "tests/support/qtprinters.h"
#include "tests/support/recordingsurface.h"

namespace plotwell::test {

// An editor wired to fakes, drawing on the given surface and sized to it.
struct EditorOn : FakeServices {
    explicit EditorOn(DrawingSurface& surface) : editor(on(surface, settings))
    {
        editor.view.mapWidth = surface.width();
        editor.view.mapHeight = surface.height();
    }
    MemorySettingsStore settings;
    Editor editor;
};

struct RecordingHolder {
    RecordingSurface surface;
};

// An editor on a recording surface: nothing reaches the user's settings,
// clipboard or screen. It counts how often the map was given the focus.
struct FakeWorld : RecordingHolder, EditorOn {
    FakeWorld() : EditorOn(surface)
    {
        editor.focusMap = [this] { ++focused; };
    }
    int focused = 0;
};

} // namespace plotwell::test
