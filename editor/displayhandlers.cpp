#include "editor/displayhandlers.h"

#include "document/numbertext.h"
#include "editor/editor.h"
#include "view/zoom.h"

#include <algorithm>
#include <limits>

namespace plotwell {
namespace {

// Redraws and hands the keyboard focus back to the map, so that its keys keep arriving.
void redrawAndFocusMap(Editor& editor)
{
    editor.drawLines();
    editor.focusMap();
}

void askHeightRange(Editor& editor)
{
    const QString offered = QString::fromStdString(
        withDecimalSeparator(singleToText(editor.display.heightRange), editor.view.decimalSeparator));
    const QString answer = editor.services.dialogs.prompt(QStringLiteral("Height filter range:"),
                                                          QStringLiteral("Enter new value"), offered);
    // The answer is read with "." as the decimal point whatever the locale;
    // anything that is not a positive number a single can hold leaves the
    // range as it was.
    const double value = leadingNumber(answer.toStdString());
    if (value > 0 && value <= double(std::numeric_limits<float>::max()))
        editor.display.heightRange = float(value);
}

} // namespace

void chkLinesClicked(Editor& editor, bool checked)
{
    editor.display.linesChecked = checked;
    editor.display.showLines = checked;
    redrawAndFocusMap(editor);
}

void chkLabelsClicked(Editor& editor, bool checked)
{
    editor.display.labelsChecked = checked;
    editor.display.showLabels = checked;
    redrawAndFocusMap(editor);
}

void chkHeightClicked(Editor& editor, bool checked)
{
    editor.display.heightChecked = checked;
    editor.display.heightFilterOn = checked;
    redrawAndFocusMap(editor);
}

void chkInvertClicked(Editor& editor, bool checked)
{
    editor.display.invertChecked = checked;
    editor.drawLines();
}

void chkFlashClicked(Editor& editor, bool checked)
{
    editor.display.flashChecked = checked;
    redrawAndFocusMap(editor);
}

void chkStereoClicked(Editor& editor, bool checked)
{
    editor.display.stereoChecked = checked;
    if (!checked)
        return;
    editor.underlay.underlayOn = false;
    editor.services.surface.setBackColor(kBlack);
}

void chkAspectClicked(Editor& editor, bool checked)
{
    editor.underlay.aspectChecked = checked;
    editor.frameDirty = true;
}

void stereoSliderMoved(Editor& editor, StereoSlider slider, int value)
{
    // The sliders' ranges: separation 0..100, brightness 0..255.
    const auto v = std::int16_t(std::clamp(value, 0, slider == StereoSlider::Brightness ? 255 : 100));
    DisplayOptions& d = editor.display;
    (slider == StereoSlider::Separation               ? d.stereo
         : slider == StereoSlider::SeparationByHeight ? d.stereoZ
                                                      : d.brightness) = v;
    editor.frameDirty = true;
}

void chkHeightMouseDown(Editor& editor, int button)
{
    if (button != kRightButton)
        return;
    askHeightRange(editor);
    editor.drawLines();
}

} // namespace plotwell
