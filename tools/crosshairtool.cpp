#include "tools/crosshairtool.h"

#include "document/ansitext.h"
#include "document/numbertext.h"
#include "editor/drawlines.h"
#include "editor/editor.h"
#include "view/viewcontrol.h"

#include <cmath>
#include <limits>

namespace plotwell {

void CrosshairTool::press(Editor& editor, SurfacePoint p)
{
    // A fresh frame without any earlier mark or band.
    editor.holdDrawing = false;
    drawLines(editor);
    m_lines = {true, p.x, p.y};

    // The read-out's text, printed beside the point and copied; the surface
    // keeps the red bold pen afterwards.
    const QString loc = editor.view.readout.loc;
    DrawingSurface& surface = editor.services.surface;
    surface.setPenColor(kRed);
    surface.setFont(12, true);
    surface.setTextPosition(p.x + 20, p.y - 300);
    surface.print(toAnsi(loc));
    surface.refresh();
    editor.services.clipboard.setText(loc);

    // The render loop leaves the printed text and the map as they are.
    editor.holdDrawing = true;
    m_mark = toWorld(editor.view, p);
}

void CrosshairTool::rightPress(Editor& editor)
{
    const QString answer = editor.services.dialogs.prompt(shiftPrompt(), QString(), QString());
    shiftMarkToLoc(editor, m_mark, answer);
}

void shiftMarkToLoc(Editor& editor, const MapPoint& mark, const QString& answer)
{
    const int comma = answer.indexOf(QLatin1Char(','));
    if (comma < 0)
        return;
    // Read as the read-out writes a location: the negated y, then the negated x.
    const double y = -leadingNumber(answer.left(comma).toStdString(), true);
    const double x = -leadingNumber(answer.mid(comma + 1).toStdString(), true);
    constexpr double kMax = std::numeric_limits<float>::max();
    if (!(std::fabs(x) <= kMax && std::fabs(y) <= kMax))
        return;
    // The typed location comes to lie where the mark is shown now: the mark
    // stands at mark * s + offset, the location will stand at loc * s + offset'.
    const double s = editor.view.currentScale;
    const double dx = (double(mark.x) - x) * s;
    const double dy = (double(mark.y) - y) * s;
    const auto fits = [kMax](double v) { return std::fabs(v) <= kMax; };
    // A view the offsets cannot hold is refused, as is a location a single cannot.
    if (!fits(dx) || !fits(dy) || !fits(editor.view.offsetX + dx) || !fits(editor.view.offsetY + dy))
        return;
    adjustOffset(editor.view, float(dx), float(dy));
}

} // namespace plotwell
