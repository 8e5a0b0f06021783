#include "soak/editsteps.h"

#include "editor/editmenu.h"
#include "editor/gamelog.h"
#include "editor/mapevents.h"
#include "soak/generator.h"
#include "soak/world.h"
#include "view/zoom.h"

namespace plotwell::soak {
namespace {

Step make(const char* kind, std::vector<double> numbers = {}, std::vector<QString> texts = {})
{
    return Step{kind, std::move(numbers), std::move(texts)};
}

void answerWith(World& world, const Step& step)
{
    world.answers.assign(step.texts.begin(), step.texts.end());
}

// The Label Properties dialog's answers: accepted or cancelled, then the
// text, the size's place in the list (out of it at times) and the height.
std::vector<QString> labelAnswers(Generator& g)
{
    if (g.rng.chance(0.15))
        return {QString()};
    const QString size = QString::number(g.rng.chance(0.9) ? g.rng.between(0, 4) : g.rng.between(-3, 100));
    return {QStringLiteral("ok"), g.caption(), size, g.rng.chance(0.5) ? g.typedNumber() : QStringLiteral("0")};
}

// A distance as typed: the game's "y, x" or "y, x, z", or anything at all.
QString typedDistance(Generator& g)
{
    switch (g.rng.below(4)) {
        case 0:
            return g.typedNumber() + QStringLiteral(", ") + g.typedNumber() + QStringLiteral(", ") + g.typedNumber();
        case 1:
            return g.caption();
        default:
            return g.typedLocation();
    }
}

} // namespace

Step makeDoubleClick(Generator& g)
{
    const SurfacePoint p = g.point();
    const std::vector<QString> answers = labelAnswers(g);
    // As the window hands it on: press, release, press, release, then the double click.
    for (int i = 0; i < 2; ++i) {
        g.plan(make("press", {double(kLeftButton), p.x, p.y}));
        g.plan(make("release", {double(kLeftButton)}));
    }
    g.plan(make("double_click", {double(kLeftButton), p.x, p.y}, answers));
    return make("tool", {double(ToolId::Move)});
}

void runDoubleClick(World& w, const Step& s)
{
    answerWith(w, s);
    mapDoubleClick(w.editor, s.whole(0), {s.single(1), s.single(2)});
}

Step makeMoveSelection(Generator& g)
{
    return make("move_selection", {}, {typedDistance(g)});
}

void runMoveSelection(World& w, const Step& s)
{
    answerWith(w, s);
    moveSelectionFromMenu(w.editor);
}

Step makeLabelProperties(Generator& g)
{
    return make("label_properties", {}, labelAnswers(g));
}

void runLabelProperties(World& w, const Step& s)
{
    answerWith(w, s);
    // The menu entry is there only while exactly one label is selected.
    if (canEditLabelProperties(w.editor))
        labelPropertiesFromMenu(w.editor);
}

Step makeSnap(Generator&)
{
    return make("snap");
}

void runSnap(World& w, const Step&)
{
    toggleSnapToLineEnds(w.editor);
}

Step makeKeepInView(Generator&)
{
    return make("keep_in_view");
}

void runKeepInView(World& w, const Step&)
{
    toggleKeepPlayerInView(w.editor);
}

} // namespace plotwell::soak
