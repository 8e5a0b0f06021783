#include "editor/displayhandlers.h"

#include "document/numbertext.h"
#include "editor/editor.h"
#include "view/zoom.h"

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
    const QString answer =
        editor.services.dialogs.prompt(QStringLiteral("Height filter range:"), QStringLiteral("Enter new value"), offered);
    // The answer is read with "." as the decimal point whatever the locale;
    // anything that is not a positive number a single can hold leaves the
    // range as it was.
    const double value = leadingNumber(answer.toStdString());
    if (value > 0 && value <= double(std::numeric_limits<float>::max()))
        editor.display.heightRange = float(value);
}

} // namespace

void chkLinesClicked(Editor& editor)
{
    editor.display.showLines = editor.display.linesChecked;
    redrawAndFocusMap(editor);
}

void chkLabelsClicked(Editor& editor)
{
    editor.display.showLabels = editor.display.labelsChecked;
    redrawAndFocusMap(editor);
}

void chkHeightClicked(Editor& editor)
{
    editor.display.heightFilterOn = editor.display.heightChecked;
    redrawAndFocusMap(editor);
}

void chkInvertClicked(Editor& editor) { editor.drawLines(); }

void chkFlashClicked(Editor& editor) { redrawAndFocusMap(editor); }

void chkStereoClicked(Editor& editor)
{
    if (!editor.display.stereoChecked)
        return;
    editor.underlay.underlayOn = false;
    editor.services.surface.setBackColor(kBlack);
}

void chkHeightMouseDown(Editor& editor, int button)
{
    if (button != kRightButton)
        return;
    askHeightRange(editor);
    editor.drawLines();
}

} // namespace plotwell
