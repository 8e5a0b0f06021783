#pragma once

#include <QKeyEvent>

namespace plotwell {

// The editor's key code for a key event (arrows 37..40, Delete 46, Escape 27,
// letters and digits their capital ASCII code, the keypad and main plus and
// minus keys 107, 109, 187, 189); 0 for keys the editor has no code for.
int editorKeyCode(const QKeyEvent& event);
// The modifier mask (1 Shift, 2 Ctrl, 4 Alt) as it stands after the event,
// the event's own modifier key included on a press and excluded on a release.
int editorShiftMask(const QKeyEvent& event);

// Qt's modifiers for a modifier mask of the editor's.
Qt::KeyboardModifiers qtModifiers(int shift);

} // namespace plotwell
