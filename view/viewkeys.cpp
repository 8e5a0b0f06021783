#include "view/viewkeys.h"

#include "view/viewcontrol.h"

namespace plotwell {

void keyFlagsDown(KeyFlags& keys, int keyCode, int shift)
{
    if (keyCode == Key::Alt)
        keys.altKeyDown = true;
    if (keyCode == Key::Ctrl)
        keys.ctrlKeyDown = true;
    // Ctrl+Z is Undo, not Z held for the wheel.
    if (keyCode == Key::Z && !(shift & kCtrlMask))
        keys.zKey = true;
    if (shift == kShiftMask)
        keys.theShiftKeyIsDown = true;
}

void keyFlagsUp(KeyFlags& keys, int keyCode, int shift)
{
    if (keyCode == Key::Alt)
        keys.altKeyDown = false;
    if (shift == 0)
        keys.theShiftKeyIsDown = false;
    if (keyCode == Key::Ctrl)
        keys.ctrlKeyDown = false;
    if (keyCode == Key::Z)
        keys.zKey = false;
}

void viewKeyDown(View& view, MapDocument& doc, int keyCode, int shift)
{
    const bool shiftAlone = shift == kShiftMask;
    const float step = shiftAlone ? 500 : 10;
    switch (keyCode) {
        case Key::Left:
            view.offsetX -= step;
            break;
        case Key::Right:
            view.offsetX += step;
            break;
        case Key::Up:
            view.offsetY -= step;
            break;
        case Key::Down:
            view.offsetY += step;
            break;
        case Key::PadMinus:
        case Key::Minus:
            view.currentScale -= shiftAlone ? 0.1f : 0.01f;
            if (view.currentScale < 0.01f)
                view.currentScale = 0.01f;
            rescaleAll(view, doc);
            break;
        case Key::PadPlus:
        case Key::Plus:
            view.currentScale += shiftAlone ? 0.1f : 0.01f;
            rescaleAll(view, doc);
            break;
        default:
            break;
    }
}

} // namespace plotwell
