#include "editor/palettecommands.h"

#include "document/numbertext.h"
#include "editor/editor.h"
#include "editor/edits.h"
#include "view/zoom.h"

namespace plotwell {
namespace {

std::uint8_t& channel(ColorRGB& c, int index)
{
    return index == 0 ? c.r : index == 1 ? c.g : c.b;
}

// Shows the active colour and gives it to every selected line and label. A
// drag along a strip recolours as it goes, as one step until it is let go.
void applyActiveColor(Editor& editor, EditHistory::Gesture gesture = EditHistory::Gesture::Ends)
{
    showActiveColor(editor.palette);
    editor.history.recolorSelection(editor.palette.activeColor, gesture);
}

} // namespace

void swatchPressed(Editor& editor, int index, int button)
{
    Palette& palette = editor.palette;
    const auto i = std::size_t(index);
    if (button == kLeftButton) {
        palette.activeColor = palette.presetColors[i];
        applyActiveColor(editor);
    } else if (button == kRightButton || button == kMiddleButton) {
        palette.presetColors[i] = palette.activeColor;
        palette.swatchColors[i] = palette.presetColors[i];
        saveColorPresets(palette, editor.services.settings);
    }
    editor.focusMap();
}

void stripMouseMove(Editor& editor, int index, int buttons, float x)
{
    if (buttons == kLeftButton) {
        channel(editor.palette.activeColor, index) = stripValue(x);
        applyActiveColor(editor, EditHistory::Gesture::Continues);
    }
    editor.focusMap();
}

void stripReleased(Editor& editor)
{
    editor.history.endGesture();
}

void stripDoubleClicked(Editor& editor, int index)
{
    std::uint8_t& value = channel(editor.palette.activeColor, index);
    const QString answer = editor.services.dialogs.prompt(QStringLiteral("Set new value (0-255)"),
                                                          QStringLiteral("Enter Color value"), QString::number(value));
    // Cancelling or an answer that is no number gives 0; beyond 0..255 changes nothing.
    const double v = leadingNumber(answer.toStdString(), true);
    if (v >= 0 && v <= 255) {
        value = std::uint8_t(roundHalfEven(v));
        applyActiveColor(editor);
    }
    editor.focusMap();
}

void backgroundSwatchClicked(Editor& editor)
{
    DrawingSurface& surface = editor.services.surface;
    surface.setBackColor(editor.palette.activeColor);
    editor.palette.backgroundSwatch = surface.backColor();
    editor.focusMap();
}

} // namespace plotwell
