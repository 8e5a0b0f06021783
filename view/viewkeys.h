#pragma once

#include "document/mapdocument.h"
#include "view/view.h"

namespace plotwell {

// Key codes of the map's key events, as the keyboard reports them.
namespace Key {
constexpr int Shift = 16;
constexpr int Escape = 27;
constexpr int Left = 37;
constexpr int Up = 38;
constexpr int Right = 39;
constexpr int Down = 40;
constexpr int Delete = 46;
constexpr int Ctrl = 17;
constexpr int Alt = 18;
constexpr int Y = 89;
constexpr int Z = 90;
constexpr int PadPlus = 107;
constexpr int PadMinus = 109;
constexpr int Plus = 187; // the plus/equals key
constexpr int Minus = 189;
} // namespace Key

// The modifier mask of a key event: 1 Shift, 2 Ctrl, 4 Alt.
constexpr int kShiftMask = 1;
constexpr int kCtrlMask = 2;
constexpr int kAltMask = 4;

// The modifier keys as the map's key events leave them. Shift counts only
// when it is held alone: Shift with Ctrl or Alt is not Shift.
struct KeyFlags {
    bool theShiftKeyIsDown = false;
    bool ctrlKeyDown = false;
    bool altKeyDown = false;
    bool zKey = false;
};

void keyFlagsDown(KeyFlags& keys, int keyCode, int shift);
void keyFlagsUp(KeyFlags& keys, int keyCode, int shift);

// The view keys: the arrows move the view by 10 twips (500 with Shift alone);
// the plus and minus keys change the scale by 0.01 (0.1 with Shift alone),
// not below 0.01 and with no upper limit, about the surface origin, without
// moving the zoom marker.
void viewKeyDown(View& view, MapDocument& doc, int keyCode, int shift);

} // namespace plotwell
