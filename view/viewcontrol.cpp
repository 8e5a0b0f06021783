#include "view/viewcontrol.h"

#include "document/numbertext.h"
#include "shell/editor.h"

#include <charconv>

namespace plotwell {

void adjustOffset(Editor& editor, float x, float y)
{
    editor.view.offsetX += x;
    editor.view.offsetY += y;
}

float getCurrentScale(const Editor& editor) { return editor.view.currentScale; }

void setCurrentScale(Editor& editor, float newScale)
{
    if (newScale > 100)
        newScale = 100;
    if (newScale < 0.5f)
        newScale = 0.5f;
    editor.view.currentScale = newScale;
    rescaleAll(editor);

    // The marker stands at scale / 99.5 of the strip's width, at most its right end.
    const float r = editor.view.currentScale / 99.5f;
    float w = ZoomStrip::kWidth * r;
    if (w < 0)
        w = 0;
    if (w > ZoomStrip::kWidth)
        w = ZoomStrip::kWidth;
    editor.zoom.markerX1 = ZoomStrip::kLeft + w;
}

float getCurrentZ(const Editor& editor) { return editor.view.currentZ; }

void setCurrentZ(Editor& editor, float z) { editor.view.currentZ = z; }

QString scaleText(float scale, char decimalSeparator)
{
    const double rounded = roundHalfEven(double(scale) * 1e5) / 1e5;
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, rounded, std::chars_format::fixed, 5);
    std::string text(buffer, result.ptr);
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.')
        text.pop_back();
    if (text == "-0")
        text = "0";
    return QString::fromStdString(withDecimalSeparator(text, decimalSeparator));
}

void rescaleAll(Editor& editor)
{
    const float scale = editor.view.currentScale;
    editor.zoom.caption = QStringLiteral("Scale: ") + scaleText(scale, editor.decimalSeparator);
    for (MapLine& line : editor.doc.lines()) {
        scalePoint(line.p1, scale);
        scalePoint(line.p2, scale);
    }
    for (MapLabel& label : editor.doc.labels())
        scalePoint(label.pos, scale);
}

void resetView(Editor& editor)
{
    editor.view.currentScale = 1;
    rescaleAll(editor);
    editor.view.offsetX = 0;
    editor.view.offsetY = 0;
}

void showLocation(Editor& editor, float x, float y)
{
    MapPoint p = toWorld(editor.view, x, y);
    p.z = editor.view.currentZ;
    editor.readout.x = QString::fromStdString(singleToText(p.x));
    editor.readout.y = QString::fromStdString(singleToText(p.y));
    editor.readout.z = QString::fromStdString(singleToText(p.z));
    // The read-out gives the negated world y first, then the negated world x.
    const char sep = editor.decimalSeparator;
    editor.readout.loc = QStringLiteral("Loc: ")
        + QString::fromStdString(withDecimalSeparator(singleToText(-p.y), sep)) + QStringLiteral(" , ")
        + QString::fromStdString(withDecimalSeparator(singleToText(-p.x), sep));
}

} // namespace plotwell
