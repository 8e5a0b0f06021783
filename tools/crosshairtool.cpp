#include "tools/crosshairtool.h"

#include "document/ansitext.h"
#include "document/numbertext.h"
#include "tools/movetool.h"
#include "tools/snapping.h"
#include "view/viewcontrol.h"

#include <cmath>
#include <limits>

namespace plotwell {

void CrosshairTool::press(const ToolContext& context, SurfacePoint p)
{
    // A snapped mark stands on the line end itself, and reads its location.
    const TakenPoint taken = takePoint(context, p);
    if (taken.snapped) {
        p = surfacePointOf(context.view, taken.world);
        showWorldLocation(context.view, taken.world);
    }
    // A fresh frame without any earlier mark or band.
    context.state.holdDrawing = false;
    context.drawFrame();
    m_lines = {true, p.x, p.y};

    // The read-out's text, printed beside the point and copied; the surface
    // keeps the red bold pen afterwards.
    const QString loc = context.view.readout.loc;
    DrawingSurface& surface = context.surface;
    surface.setPenColor(kRed);
    surface.setFont(12, true);
    surface.setTextPosition(p.x + 20, p.y - 300);
    surface.print(toAnsi(loc));
    surface.refresh();
    context.clipboard.setText(loc);

    // The render loop leaves the printed text and the map as they are.
    context.state.holdDrawing = true;
    m_mark = taken.world;
    m_mark.z = 0;
}

void CrosshairTool::rightPress(const ToolContext& context)
{
    const QString answer = context.dialogs.prompt(shiftPrompt(), QString(), QString());
    shiftMarkToLoc(context, m_mark, answer);
}

void shiftMarkToLoc(const ToolContext& context, const MapPoint& mark, const QString& answer)
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
    const double s = context.view.currentScale;
    const double dx = (double(mark.x) - x) * s;
    const double dy = (double(mark.y) - y) * s;
    const auto fits = [](double v) { return std::fabs(v) <= kMax; };
    // A view the offsets cannot hold is refused, as is a location a single cannot.
    if (!fits(dx) || !fits(dy) || !fits(context.view.offsetX + dx) || !fits(context.view.offsetY + dy))
        return;
    adjustOffset(context.view, float(dx), float(dy));
}

} // namespace plotwell
