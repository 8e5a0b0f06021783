#include "shell/widgets/keycodes.h"

#include "view/viewkeys.h"

namespace plotwell {

int editorKeyCode(const QKeyEvent& event)
{
    const int key = event.key();
    const bool keypad = event.modifiers() & Qt::KeypadModifier;
    switch (key) {
        case Qt::Key_Escape:
            return Key::Escape;
        case Qt::Key_Left:
            return Key::Left;
        case Qt::Key_Up:
            return Key::Up;
        case Qt::Key_Right:
            return Key::Right;
        case Qt::Key_Down:
            return Key::Down;
        case Qt::Key_Delete:
            return Key::Delete;
        case Qt::Key_Control:
            return Key::Ctrl;
        case Qt::Key_Alt:
            return Key::Alt;
        case Qt::Key_Shift:
            return Key::Shift;
        case Qt::Key_Plus:
            return keypad ? Key::PadPlus : Key::Plus;
        case Qt::Key_Equal:
            return Key::Plus;
        case Qt::Key_Minus:
            return keypad ? Key::PadMinus : Key::Minus;
        case Qt::Key_Underscore:
            return Key::Minus;
        default:
            break;
    }
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return key;
    return 0;
}

Qt::KeyboardModifiers qtModifiers(int shift)
{
    Qt::KeyboardModifiers m;
    m.setFlag(Qt::ShiftModifier, shift & kShiftMask);
    m.setFlag(Qt::ControlModifier, shift & kCtrlMask);
    m.setFlag(Qt::AltModifier, shift & kAltMask);
    return m;
}

int editorShiftMask(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers m = event.modifiers();
    int mask = (m & Qt::ShiftModifier ? kShiftMask : 0) | (m & Qt::ControlModifier ? kCtrlMask : 0)
        | (m & Qt::AltModifier ? kAltMask : 0);
    // Platforms differ in whether a modifier key's own event carries it.
    int own = 0;
    if (event.key() == Qt::Key_Shift)
        own = kShiftMask;
    else if (event.key() == Qt::Key_Control)
        own = kCtrlMask;
    else if (event.key() == Qt::Key_Alt)
        own = kAltMask;
    if (event.type() == QEvent::KeyPress)
        mask |= own;
    else
        mask &= ~own;
    return mask;
}

} // namespace plotwell
