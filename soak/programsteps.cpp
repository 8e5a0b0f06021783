#include "soak/programsteps.h"

#include "document/mapwriter.h"
#include "editor/edits.h"
#include "soak/generator.h"
#include "soak/world.h"
#include "view/viewkeys.h"

#include <algorithm>
#include <map>

namespace plotwell::soak {
namespace {

Step make(const char* kind, std::vector<double> numbers = {})
{
    return Step{kind, std::move(numbers), {}};
}

int runLength(Generator& g)
{
    if (g.rng.chance(0.65))
        return g.rng.between(1, 3);
    return g.rng.chance(0.85) ? g.rng.between(4, 30) : g.rng.between(60, 200);
}

// Undo or redo so many times: by the menu, or holding Ctrl on the map while
// Z (with Shift to redo) or Y repeats. The window's shortcuts take those
// keys before the map sees them; the modifiers and the releases reach it.
void presses(Generator& g, std::vector<Step>& run, bool undo, int count)
{
    if (g.rng.chance(0.35)) {
        for (int i = 0; i < count; ++i)
            run.push_back(make(undo ? "undo" : "redo"));
        return;
    }
    const bool withY = !undo && g.rng.chance(0.5);
    const int key = withY ? Key::Y : Key::Z;
    const int shift = undo || withY ? kCtrlMask : kCtrlMask | kShiftMask;
    run.push_back(make("keydown", {double(Key::Ctrl), double(kCtrlMask)}));
    if (shift & kShiftMask)
        run.push_back(make("keydown", {double(Key::Shift), double(shift)}));
    for (int i = 0; i < count; ++i)
        run.push_back(make("keydown", {double(key), double(shift)}));
    run.push_back(make("keyup", {double(key), double(shift)}));
    if (shift & kShiftMask)
        run.push_back(make("keyup", {double(Key::Shift), double(kCtrlMask)}));
    run.push_back(make("keyup", {double(Key::Ctrl), 0}));
}

Step firstPlanningRest(Generator& g, std::vector<Step> run)
{
    for (std::size_t i = 1; i < run.size(); ++i)
        g.plan(std::move(run[i]));
    return std::move(run.front());
}

} // namespace

std::vector<Step> undoRun(Generator& g)
{
    std::vector<Step> run;
    presses(g, run, true, runLength(g));
    if (g.rng.chance(0.6))
        presses(g, run, false, runLength(g));
    return run;
}

bool oftenUndone(const Step& step, const World& w)
{
    // A location the game writes while Record Path is on may add a line.
    if (step.kind == "log_line")
        return w.editor.follower.recordPath;
    static const char* const kinds[] = {
        "load",      "drop",         "close_all", "recover", "swatch", "colour_typed", "colour_strip_release",
        "intersect", "caption_enter"};
    for (const char* kind : kinds)
        if (step.kind == kind)
            return true;
    return step.kind == "keydown" && step.whole(0) == Key::Delete;
}

Step makeUndo(Generator& g)
{
    return firstPlanningRest(g, undoRun(g));
}
void runUndo(World& w, const Step&)
{
    undoEdit(w.editor);
}

Step makeRedo(Generator& g)
{
    std::vector<Step> run;
    presses(g, run, false, runLength(g));
    return firstPlanningRest(g, std::move(run));
}
void runRedo(World& w, const Step&)
{
    redoEdit(w.editor);
}

Step makeClock(Generator& g)
{
    // Time passing: less than the pause a copy waits for, the pause, or the
    // longest wait; the copy being written finished in it, or not yet.
    return make("clock",
                {double(g.rng.pick<int>({100, 500, 500, 1500, 3000, 3500, 10000, 31000})), double(g.rng.chance(0.8))});
}
void runClock(World& w, const Step& s)
{
    // The window's recovery clock ticks twice a second, between handlers.
    const qint64 msecs = std::clamp<qint64>(qint64(s.number(0)), 0, 60000);
    const bool copiesFinish = s.whole(1) != 0;
    for (qint64 passed = 0; passed < msecs; passed += 500) {
        w.machine.recoveryPlace.now += std::min<qint64>(500, msecs - passed);
        if (copiesFinish)
            w.recovery.waitForCopy();
        w.recovery.tick(w.editor);
    }
}

Step makeEnd(Generator& g)
{
    // Often the next run recovers at once.
    if (g.rng.chance(0.6)) {
        g.plan(make("frame", {1}));
        g.plan(make("recover"));
    }
    return make("end", {g.rng.range(6000, 30000), g.rng.range(5000, 18000)});
}
void runEnd(World& w, const Step& s)
{
    // The next run starts in a window of the step's size.
    w.nextWindow = QSizeF(s.number(0), s.number(1));
    w.closeWindow();
}

Step makeRecover(Generator&)
{
    return make("recover");
}
void runRecover(World& w, const Step&)
{
    std::map<int, LeftLayer>& left = w.machine.left;
    // The menu entry is enabled when there is something to recover.
    if (w.recovery.canRecover() != !left.empty()) {
        w.fault = "recovery: " + std::to_string(left.size()) + " layers were left unsaved, yet recovering is "
            + (left.empty() ? "offered" : "not offered");
        return;
    }
    if (left.empty())
        return;
    w.recovery.recover(w.editor);
    for (const auto& [layer, expected] : left) {
        const std::string text = formatLayer(w.editor.doc, std::int16_t(layer));
        const QString& file = w.editor.doc.homes[std::size_t(layer)].layerFile;
        if (text != expected.text || file != expected.file) {
            w.fault = "recovery: layer " + std::to_string(layer) + " came back as " + std::to_string(text.size())
                + " bytes of " + shortText(file) + " instead of " + std::to_string(expected.text.size()) + " bytes of "
                + shortText(expected.file);
            break;
        }
    }
    left.clear();
}

void noteLeftLayers(World& w)
{
    for (std::int16_t n = 0; n < kLayerCount; ++n) {
        if (w.editor.history.layerModified(n))
            w.machine.left[n] = {formatLayer(w.editor.doc, n), w.editor.doc.homes[std::size_t(n)].layerFile};
    }
}

} // namespace plotwell::soak
