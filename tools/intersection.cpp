#include "tools/intersection.h"

#include "document/ansitext.h"
#include "tools/recordtext.h"

#include <cmath>

namespace plotwell {

MapPoint intersectLines(MapPoint a1, MapPoint a2, MapPoint b1, MapPoint b2)
{
    MapPoint result;
    result.x = -1;
    result.y = -1;
    // The first end of a vertical line moves 1 to the right, for this
    // computation only, so that its slope exists.
    if (b1.x - b2.x == 0)
        b1.x = b1.x + 1;
    const float mB = (b1.y - b2.y) / (b1.x - b2.x);
    if (a1.x - a2.x == 0)
        a1.x = a1.x + 1;
    const float mA = (a1.y - a2.y) / (a1.x - a2.x);
    const float cA = a1.y - mA * a1.x;
    const float cB = b1.y - mB * b1.x;
    if (mA - mB == 0)
        return result;
    result.x = (cB - cA) / (mA - mB);
    result.y = result.x * mA + cA;
    return result;
}

void plotIntersection(const ToolContext& context)
{
    const auto& lines = context.doc.lines();
    std::size_t count = 0;
    MapLine a, b;
    for (const MapLine& line : lines) {
        if (!line.selected)
            continue;
        if (count == 0)
            a = line;
        else if (count == 1)
            b = line;
        ++count;
    }
    Dialogs& dialogs = context.dialogs;
    if (count != 2) {
        dialogs.message(
            QStringLiteral("This function only works when you have exactly two lines selected, not %1").arg(count));
        return;
    }
    const MapPoint at = intersectLines(a.p1, a.p2, b.p1, b.p2);
    // Lines so nearly parallel that they meet beyond what a single holds do not meet either.
    if ((at.x == -1 && at.y == -1) || !std::isfinite(at.x) || !std::isfinite(at.y)) {
        dialogs.message(QStringLiteral("Failed to find an intersection for these lines"));
        return;
    }
    // Each line is extended from its end nearer the crossing; on a tie, from
    // its second end. The two new lines are one step.
    const AppendMark mark = appendMark(context.doc);
    for (const MapLine* line : {&a, &b}) {
        const MapPoint& from = pointDistance(line->p1, at) < pointDistance(line->p2, at) ? line->p1 : line->p2;
        std::int16_t layer = 0;
        context.doc.addLine(lineRecordText(from, at, context.view.currentZ, context.activeColor), layer,
                            context.view.currentScale);
    }
    context.history.recordAppended(mark, QStringLiteral("Plot Intersection"));
}

void findLabels(const ToolContext& context)
{
    const QString answer =
        context.dialogs.prompt(QStringLiteral("Enter keyword to search for"), QString(), QStringLiteral("bank"));
    if (answer.isEmpty())
        return;
    // The text is searched as stored, with its blanks as underscores.
    const QString keyword = answer.toLower();
    const auto& labels = context.doc.labels();
    for (std::size_t i = 0; i < labels.size(); ++i) {
        if (fromAnsi(labels[i].text).toLower().contains(keyword))
            context.doc.setLabelSelected(i, true);
    }
}

} // namespace plotwell
