#include "soak/stepkinds.h"
#include "editor/mapevents.h"

#include "editor/displayhandlers.h"
#include "editor/edits.h"
#include "editor/helpcommands.h"
#include "editor/layercommands.h"
#include "editor/maploading.h"
#include "editor/mapsaving.h"
#include "editor/palettecommands.h"
#include "editor/shutdown.h"
#include "editor/startup.h"
#include "editor/underlaycommands.h"
#include "editor/viewcommands.h"
#include "editor/windowlayout.h"
#include "soak/editsteps.h"
#include "soak/files.h"
#include "soak/generator.h"
#include "soak/logsteps.h"
#include "soak/programsteps.h"
#include "soak/world.h"
#include "tools/intersection.h"
#include "tools/selection.h"
#include "view/viewkeys.h"
#include "view/zoom.h"

#include <QDir>

#include <algorithm>
#include <cmath>

namespace plotwell::soak {
namespace {

Step make(const char* kind, std::vector<double> numbers = {}, std::vector<QString> texts = {})
{
    return Step{kind, std::move(numbers), std::move(texts)};
}

// The answers a step carries, for whatever dialog its handler shows.
void answerWith(World& world, const Step& step)
{
    world.answers.assign(step.texts.begin(), step.texts.end());
}

int layerOf(const Step& step, std::size_t i)
{
    return ((step.whole(i) % kLayerCount) + kLayerCount) % kLayerCount;
}

// ---- the map: mouse, keys, wheel

Step makePress(Generator& g)
{
    const int button = g.pressButton();
    const SurfacePoint p = g.point();
    // The Crosshair's right press asks for a location.
    Step press = make("press", {double(button), p.x, p.y}, {g.typedLocation()});
    if (g.rng.chance(0.6)) {
        // A drag: moves with the button held, then its release.
        for (int i = g.rng.between(1, 6); i > 0; --i) {
            const SurfacePoint q = g.rng.chance(0.8)
                ? SurfacePoint{p.x + float(g.rng.range(-900, 900)), p.y + float(g.rng.range(-900, 900))}
                : g.point();
            g.plan(make("move", {double(button), q.x, q.y}));
        }
        g.plan(make("release", {double(button)}));
    } else if (g.rng.chance(0.7)) {
        g.plan(make("release", {double(button)}));
    }
    if (g.world().editor.tools.current() == ToolId::Label && button == kLeftButton && g.rng.chance(0.8))
        g.plan(g.rng.chance(0.85) ? make("caption_enter", {}, {g.caption()}) : make("caption_escape"));
    return press;
}

void runPress(World& w, const Step& s)
{
    answerWith(w, s);
    mapMouseDown(w.editor, s.whole(0), {s.single(1), s.single(2)});
}

Step makeMove(Generator& g)
{
    const SurfacePoint p = g.point();
    return make("move", {double(g.heldButtons()), p.x, p.y});
}

void runMove(World& w, const Step& s)
{
    mapMouseMove(w.editor, s.whole(0), {s.single(1), s.single(2)});
}

Step makeRelease(Generator& g)
{
    return make("release", {double(g.pressButton())});
}

void runRelease(World& w, const Step&)
{
    mapMouseUp(w.editor);
}

int keyCode(Generator& g)
{
    return g.rng.pick<int>({Key::Left, Key::Right, Key::Up, Key::Down, Key::Delete, Key::Delete, Key::Escape, Key::Z,
                            Key::Shift, Key::Ctrl, Key::Alt, Key::PadPlus, Key::PadMinus, Key::Plus, Key::Minus, 'A',
                            Key::Y, 0});
}

int modifiers(Generator& g)
{
    return g.rng.chance(0.6) ? 0 : g.rng.between(1, 7);
}

Step makeKeyDown(Generator& g)
{
    const int code = keyCode(g);
    const int shift = modifiers(g);
    if ((code == Key::Ctrl || code == Key::Shift || code == Key::Alt) && g.rng.chance(0.85)) {
        // A modifier held over a click or a drag, or a few keys, and let go.
        for (int i = g.rng.between(1, 3); i > 0; --i)
            g.planMade(g.rng.chance(0.7) ? makePress : makeKeyDown);
        g.plan(make("keyup", {double(code), 0}));
    } else if (code == Key::Z && g.rng.chance(0.7)) {
        // Z held while the wheel turns steps the current Z.
        for (int i = g.rng.between(1, 4); i > 0; --i)
            g.plan(make("wheel", {double(g.rng.pick<int>({120, -120, 1, -360}))}));
        g.plan(make("keyup", {double(Key::Z), double(modifiers(g))}));
    } else if (g.rng.chance(0.4)) {
        // A held key repeats its press; the zoom keys are held long, to the ends of the scale.
        const bool zoom = code == Key::PadMinus || code == Key::Minus || code == Key::PadPlus || code == Key::Plus;
        for (int i = g.rng.between(1, zoom ? 150 : 8); i > 0; --i)
            g.plan(make("keydown", {double(code), double(shift)}));
        g.plan(make("keyup", {double(code), double(modifiers(g))}));
    }
    return make("keydown", {double(code), double(shift)});
}

void runKeyDown(World& w, const Step& s)
{
    // The Edit menu's shortcuts take their keys before the map sees them.
    if (!editShortcutPressed(w.editor, s.whole(0), s.whole(1)))
        mapKeyDown(w.editor, s.whole(0), s.whole(1));
}

Step makeKeyUp(Generator& g)
{
    return make("keyup", {double(keyCode(g)), double(modifiers(g))});
}

void runKeyUp(World& w, const Step& s)
{
    mapKeyUp(w.editor, s.whole(0), s.whole(1));
}

Step makeWheel(Generator& g)
{
    return make("wheel", {double(g.rng.pick<int>({120, -120, 120, -120, 240, -1, 0, 2147483647, -2147483647}))});
}

void runWheel(World& w, const Step& s)
{
    onMouseWheel(w.editor, s.whole(0));
}

// ---- the tool frame

Step makeTool(Generator& g)
{
    return make("tool", {double(g.rng.below(kToolCount))});
}

void runTool(World& w, const Step& s)
{
    toolIconClicked(w.editor, ToolId(((s.whole(0) % kToolCount) + kToolCount) % kToolCount));
}

Step makeZoomStrip(Generator& g)
{
    const double x = g.rng.chance(0.9) ? g.rng.range(-300, ZoomStrip::kWidth + 300) : g.rng.pick<double>({-1e30, 1e30});
    return make("zoom_strip", {double(g.rng.chance(0.8) ? kLeftButton : g.heldButtons()), x});
}

void runZoomStrip(World& w, const Step& s)
{
    zoomStripMouseMove(w.editor.view, w.editor.doc, s.whole(0), s.single(1));
}

Step makeFit(Generator&)
{
    return make("fit");
}

void runFit(World& w, const Step&)
{
    fitContentToScreen(w.editor);
}

// ---- the palette

Step makeSwatch(Generator& g)
{
    // The window hands the back and forward buttons over as no button (0).
    return make("swatch",
                {double(g.rng.below(kPresetCount)),
                 double(g.rng.pick<int>({kLeftButton, kLeftButton, kRightButton, kMiddleButton, 0}))});
}

void runSwatch(World& w, const Step& s)
{
    swatchPressed(w.editor, s.whole(0) % kPresetCount, s.whole(1));
}

Step makeColourStrip(Generator& g)
{
    const int strip = g.rng.below(3);
    if (g.rng.chance(0.5)) {
        // A drag along the strip with the left button, and its release.
        for (int i = g.rng.between(1, 8); i > 0; --i)
            g.plan(make("colour_strip", {double(strip), double(kLeftButton), g.rng.range(-200, 1600)}));
        g.plan(make("colour_strip_release"));
        return make("colour_strip", {double(strip), double(kLeftButton), g.rng.range(-200, 1600)});
    }
    return make("colour_strip", {double(strip), double(g.heldButtons()), g.rng.range(-200, 1600)});
}

void runColourStrip(World& w, const Step& s)
{
    stripMouseMove(w.editor, s.whole(0) % 3, s.whole(1), s.single(2));
}

Step makeColourStripRelease(Generator&)
{
    return make("colour_strip_release");
}

void runColourStripRelease(World& w, const Step&)
{
    stripReleased(w.editor);
}

Step makeColourTyped(Generator& g)
{
    return make("colour_typed", {double(g.rng.below(3))}, {g.typedNumber()});
}

void runColourTyped(World& w, const Step& s)
{
    answerWith(w, s);
    stripDoubleClicked(w.editor, s.whole(0) % 3);
}

Step makeBackgroundSwatch(Generator&)
{
    return make("background_swatch");
}

void runBackgroundSwatch(World& w, const Step&)
{
    backgroundSwatchClicked(w.editor);
}

// ---- the option frame's switches

// A click on a check box, which the window hands over with the box's new
// value (index, value). Users keep most boxes as they usually are: a box in
// its usual state is clicked now and then, one out of it mostly back soon.
Step makeToggle(const char* kind, Generator& g, bool current, bool usual, int index = 0)
{
    if (current == usual && g.rng.chance(0.7))
        return make("frame", {1});
    return make(kind, {double(index), double(!current)});
}

Step makeUnderlayButton(Generator& g)
{
    return make("underlay_button", {double(g.rng.below(3))});
}
void runUnderlayButton(World& w, const Step& s)
{
    backgroundButtonClicked(w.editor, s.whole(0) % 3);
}

Step makeAspect(Generator& g)
{
    return makeToggle("aspect", g, g.world().editor.underlay.aspectChecked, true);
}
void runAspect(World& w, const Step& s)
{
    chkAspectClicked(w.editor, s.whole(1) != 0);
}

Step makeInvert(Generator& g)
{
    return makeToggle("invert", g, g.world().editor.display.invertChecked, true);
}
void runInvert(World& w, const Step& s)
{
    chkInvertClicked(w.editor, s.whole(1) != 0);
}

Step makeShowLabels(Generator& g)
{
    return makeToggle("show_labels", g, g.world().editor.display.labelsChecked, true);
}
void runShowLabels(World& w, const Step& s)
{
    chkLabelsClicked(w.editor, s.whole(1) != 0);
}

Step makeShowLines(Generator& g)
{
    return makeToggle("show_lines", g, g.world().editor.display.linesChecked, true);
}
void runShowLines(World& w, const Step& s)
{
    chkLinesClicked(w.editor, s.whole(1) != 0);
}

Step makeFlash(Generator& g)
{
    return makeToggle("flash", g, g.world().editor.display.flashChecked, true);
}
void runFlash(World& w, const Step& s)
{
    chkFlashClicked(w.editor, s.whole(1) != 0);
}

Step makeLayerCheck(Generator& g)
{
    const int n = g.rng.below(kLayerCount);
    const bool shown = g.world().editor.display.layerChecked[std::size_t(n)];
    return makeToggle("layer_check", g, shown, !shown, n);
}
void runLayerCheck(World& w, const Step& s)
{
    const int n = layerOf(s, 0);
    layerCheckClicked(w.editor, n, s.whole(1) != 0);
}

Step makeLayerMarker(Generator& g)
{
    return make("layer_marker", {double(g.rng.below(kLayerCount))});
}
void runLayerMarker(World& w, const Step& s)
{
    activeMarkerClicked(w.editor, layerOf(s, 0));
}

Step makeHeightCheck(Generator& g)
{
    return makeToggle("height_check", g, g.world().editor.display.heightChecked, false);
}
void runHeightCheck(World& w, const Step& s)
{
    chkHeightClicked(w.editor, s.whole(1) != 0);
}

Step makeHeightRange(Generator& g)
{
    return make("height_range", {}, {g.typedNumber()});
}
void runHeightRange(World& w, const Step& s)
{
    answerWith(w, s);
    chkHeightMouseDown(w.editor, kRightButton);
}

Step makeStereo(Generator& g)
{
    return makeToggle("stereo", g, g.world().editor.display.stereoChecked, false);
}
void runStereo(World& w, const Step& s)
{
    chkStereoClicked(w.editor, s.whole(1) != 0);
}

Step makeStereoSlider(Generator& g)
{
    return make("stereo_slider", {double(g.rng.below(3)), double(g.rng.between(0, 255))});
}
void runStereoSlider(World& w, const Step& s)
{
    stereoSliderMoved(w.editor, StereoSlider((s.whole(0) % 3 + 3) % 3), s.whole(1));
}

// ---- the caption box

Step makeCaptionEnter(Generator& g)
{
    return make("caption_enter", {}, {g.caption()});
}
void runCaptionEnter(World& w, const Step& s)
{
    // Enter reaches the box only while it is shown.
    if (w.editor.tools.label().captionBox().visible)
        captionEntered(w.editor, s.text(0));
}

Step makeCaptionEscape(Generator&)
{
    return make("caption_escape");
}
void runCaptionEscape(World& w, const Step&)
{
    if (w.editor.tools.label().captionBox().visible)
        w.editor.tools.label().cancelCaption();
}

// ---- the menus

Step makeIntersect(Generator& g)
{
    // Mostly as a user goes about it: the Pointer, a click on nothing to
    // clear the selection, a click on each of two lines, then the menu.
    // The lines are ones whose middle no other line passes near, as a user
    // would pick them to be sure of the click.
    const MapDocument& doc = g.world().editor.doc;
    const View& view = g.world().editor.view;
    std::vector<SurfacePoint> clicks;
    for (int tries = 0; tries < 40 && clicks.size() < 2 && doc.lineCount() >= 2; ++tries) {
        const MapLine& line = doc.lines()[std::size_t(g.rng.bits() % doc.lineCount())];
        const MapPoint a = toSurfacePoint(view, line.p1);
        const MapPoint b = toSurfacePoint(view, line.p2);
        const SurfacePoint middle{a.sx / 2 + b.sx / 2, a.sy / 2 + b.sy / 2};
        const MapPoint at = toWorld(view, middle);
        const auto hits = std::count_if(doc.lines().begin(), doc.lines().end(),
                                        [&at](const MapLine& other) { return lineHitAt(other, at.x, at.y); });
        if (hits == 1 && std::isfinite(middle.x) && std::isfinite(middle.y)
            && (clicks.empty() || clicks.front().x != middle.x || clicks.front().y != middle.y))
            clicks.push_back(middle);
    }
    if (clicks.size() < 2 || g.rng.chance(0.2))
        return make("intersect");
    g.plan(make("press", {double(kLeftButton), -1e7, -1e7}, {QString()}));
    g.plan(make("release", {double(kLeftButton)}));
    for (const SurfacePoint& p : clicks) {
        g.plan(make("press", {double(kLeftButton), p.x, p.y}, {QString()}));
        g.plan(make("release", {double(kLeftButton)}));
    }
    g.plan(make("intersect"));
    return make("tool", {double(ToolId::Pointer)});
}
void runIntersect(World& w, const Step&)
{
    plotIntersection(w.editor.toolContext());
}

Step makeFindLabel(Generator& g)
{
    return make("find_label", {}, {g.keyword()});
}
void runFindLabel(World& w, const Step& s)
{
    answerWith(w, s);
    findLabels(w.editor.toolContext());
}

// The progress report of a load at which the window's end timer fires, as it
// does when the window was closed just before; mostly none.
double endReport(Generator& g)
{
    return g.rng.chance(0.03) ? g.rng.between(1, 2) : 0;
}

Step makeLoad(Generator& g)
{
    // A long load may be cancelled at one of its progress reports.
    return make("load",
                {double(g.rng.below(kLayerCount)), double(g.rng.chance(0.1) ? g.rng.between(1, 3) : 0), endReport(g)},
                {g.mapRecipe()});
}
void runLoad(World& w, const Step& s)
{
    answerWith(w, s);
    w.progress.cancelAt = s.whole(1);
    w.endAt = s.whole(2);
    loadLayerFromMenu(w.editor, std::int16_t(layerOf(s, 0)));
    w.progress.cancelAt = 0;
    w.endAt = 0;
}

Step makeDrop(Generator& g)
{
    Step step = make("drop", {endReport(g)});
    for (int i = g.rng.between(1, 3); i > 0; --i)
        step.texts.push_back(g.mapRecipe());
    return step;
}
void runDrop(World& w, const Step& s)
{
    w.endAt = s.whole(0);
    QStringList paths;
    for (const QString& recipe : s.texts) {
        const QString path = makeFile(w.folder, recipe);
        if (!path.isEmpty())
            paths << QDir::toNativeSeparators(path);
    }
    if (!paths.isEmpty())
        dropFiles(w.editor, paths);
    w.endAt = 0;
}

Step makeUnderlayOpen(Generator& g)
{
    return make("underlay_open", {}, {g.pictureRecipe()});
}
void runUnderlayOpen(World& w, const Step& s)
{
    answerWith(w, s);
    openUnderlayFromMenu(w.editor);
}

Step makeUnderlayClose(Generator&)
{
    return make("underlay_close");
}
void runUnderlayClose(World& w, const Step&)
{
    closeUnderlay(w.editor);
}

Step makeSave(Generator& g)
{
    Step step = make("save");
    for (int i = 0; i < kLayerCount; ++i)
        step.texts.push_back(g.saveAnswer());
    return step;
}
void runSave(World& w, const Step& s)
{
    answerWith(w, s);
    saveAllLayers(w.editor);
}

Step makeCloseAll(Generator&)
{
    return make("close_all");
}
void runCloseAll(World& w, const Step&)
{
    closeAllLayers(w.editor);
}

Step makeAbout(Generator&)
{
    return make("about");
}
void runAbout(World& w, const Step&)
{
    showAbout(w.editor.services.dialogs);
}

Step makeReadme(Generator&)
{
    return make("readme");
}
void runReadme(World& w, const Step&)
{
    showReadme(w.editor.services.launcher, w.editor.services.dialogs);
}

Step makeExit(Generator& g)
{
    // The program ends two ticks after Exit, unless the run goes on in between.
    if (g.rng.chance(0.5))
        g.plan(makeEnd(g));
    return make("exit");
}
void runExit(World& w, const Step&)
{
    // Exit starts the shutdown; its first tick lets the wheel go. The second
    // would end the program, so the run stops short of it.
    requestClose(w.editor.shell);
    if (w.editor.shell.closeCount == 0)
        endTimerTick(w.editor.shell);
}

// ---- the window

Step makeFrame(Generator& g)
{
    return make("frame", {double(g.rng.between(1, 3))});
}
void runFrame(World& w, const Step& s)
{
    for (int i = std::clamp(s.whole(0), 1, 10); i > 0; --i) {
        w.loop.tick(w.editor);
        // The window then shows the markers' colours, as it does every frame.
        for (int n = 0; n < kLayerCount; ++n)
            markerColor(w.editor, n);
    }
}

Step makeResize(Generator& g)
{
    // The window's outer size in twips, down to far too small for the panels.
    const auto side = [&g](double usual) {
        return g.rng.chance(0.8) ? g.rng.range(3000, usual) : g.rng.range(0, 3000);
    };
    return make("resize", {side(30000), side(18000)});
}
void runResize(World& w, const Step& s)
{
    layoutWindow(w.editor.view, w.editor.shell, w.editor.services.surface, s.single(0), s.single(1));
}

Step makeChangedElsewhere(Generator& g)
{
    return make("changed_elsewhere", {double(g.rng.below(kLayerCount))},
                {QStringLiteral("map %1 %2").arg(g.rng.below(int(MapKind::Count))).arg(g.rng.bits() >> 1)});
}
void runChangedElsewhere(World& w, const Step& s)
{
    // Another program rewrites a layer's file; the next save must notice.
    const QString& file = w.editor.doc.homes[std::size_t(layerOf(s, 0))].layerFile;
    if (file.isEmpty() || !QDir::cleanPath(file).startsWith(QDir::cleanPath(w.folder)))
        return;
    const QString recipe = s.text(0) + QLatin1Char(' ') + QDir(w.folder).relativeFilePath(file);
    makeFile(w.folder, recipe);
}

const std::vector<StepKind> kKinds = {
    // name, weight, nestable, make, run
    {"start", 0, false, nullptr, nullptr},
    {"tool", 160, true, makeTool, runTool},
    {"press", 560, true, makePress, runPress},
    {"move", 480, true, makeMove, runMove},
    {"release", 80, true, makeRelease, runRelease},
    {"keydown", 320, true, makeKeyDown, runKeyDown},
    {"keyup", 120, true, makeKeyUp, runKeyUp},
    {"wheel", 240, true, makeWheel, runWheel},
    {"zoom_strip", 120, true, makeZoomStrip, runZoomStrip},
    {"fit", 80, true, makeFit, runFit},
    {"swatch", 120, true, makeSwatch, runSwatch},
    {"colour_strip", 120, true, makeColourStrip, runColourStrip},
    {"colour_strip_release", 16, true, makeColourStripRelease, runColourStripRelease},
    {"colour_typed", 60, false, makeColourTyped, runColourTyped},
    {"background_swatch", 32, true, makeBackgroundSwatch, runBackgroundSwatch},
    {"underlay_button", 40, true, makeUnderlayButton, runUnderlayButton},
    {"aspect", 20, true, makeAspect, runAspect},
    {"invert", 20, true, makeInvert, runInvert},
    {"show_labels", 32, true, makeShowLabels, runShowLabels},
    {"show_lines", 32, true, makeShowLines, runShowLines},
    {"flash", 20, true, makeFlash, runFlash},
    {"layer_check", 80, true, makeLayerCheck, runLayerCheck},
    {"layer_marker", 80, true, makeLayerMarker, runLayerMarker},
    {"height_check", 40, true, makeHeightCheck, runHeightCheck},
    {"height_range", 32, false, makeHeightRange, runHeightRange},
    {"stereo", 32, true, makeStereo, runStereo},
    {"stereo_slider", 32, true, makeStereoSlider, runStereoSlider},
    {"caption_enter", 60, true, makeCaptionEnter, runCaptionEnter},
    {"caption_escape", 16, true, makeCaptionEscape, runCaptionEscape},
    {"intersect", 48, true, makeIntersect, runIntersect},
    {"find_label", 40, false, makeFindLabel, runFindLabel},
    {"load", 100, false, makeLoad, runLoad},
    {"drop", 48, true, makeDrop, runDrop},
    {"underlay_open", 32, false, makeUnderlayOpen, runUnderlayOpen},
    {"underlay_close", 12, true, makeUnderlayClose, runUnderlayClose},
    {"save", 60, false, makeSave, runSave},
    {"close_all", 20, true, makeCloseAll, runCloseAll},
    {"about", 8, true, makeAbout, runAbout},
    {"readme", 8, true, makeReadme, runReadme},
    {"exit", 1, true, makeExit, runExit},
    {"frame", 400, false, makeFrame, runFrame},
    {"resize", 24, true, makeResize, runResize},
    {"changed_elsewhere", 20, false, makeChangedElsewhere, runChangedElsewhere},
    {"undo", 30, true, makeUndo, runUndo},
    {"redo", 10, true, makeRedo, runRedo},
    {"clock", 60, false, makeClock, runClock},
    {"end", 6, true, makeEnd, runEnd},
    {"recover", 12, true, makeRecover, runRecover},
    {"export", 10, false, makeExport, runExport},
    {"follow_log", 12, false, makeFollowLog, runFollowLog},
    {"record_path", 16, true, makeRecordPath, runRecordPath},
    {"stop_following", 4, true, makeStopFollowing, runStopFollowing},
    {"log_line", 100, true, makeLogLine, runLogLine},
    {"double_click", 24, false, makeDoubleClick, runDoubleClick},
    {"move_selection", 24, false, makeMoveSelection, runMoveSelection},
    {"label_properties", 24, false, makeLabelProperties, runLabelProperties},
    {"snap", 16, true, makeSnap, runSnap},
    {"keep_in_view", 8, true, makeKeepInView, runKeepInView},
};

void runStart(World& w, const Step& s)
{
    // As the window starts: the presets are in the settings store, the
    // defaults are set, the window takes its size, then it shows itself.
    for (int i = 0; i < kPresetCount && i < int(s.texts.size()); ++i)
        w.machine.settings.save(QStringLiteral("colorPresets"), QString::number(i), s.texts[std::size_t(i)]);
    startProgram(w, QSizeF(s.number(0), s.number(1)));
}

} // namespace

void startProgram(World& world, QSizeF window)
{
    startUp(world.editor);
    layoutWindow(world.editor.view, world.editor.shell, world.editor.services.surface, float(window.width()),
                 float(window.height()));
    finishStartUp(world.editor);
}

const std::vector<StepKind>& stepKinds()
{
    return kKinds;
}

const StepKind* findStepKind(std::string_view name)
{
    for (const StepKind& kind : kKinds)
        if (name == kind.name)
            return &kind;
    return nullptr;
}

Step startStep(Generator& g)
{
    Step step = make("start", {g.rng.range(6000, 30000), g.rng.range(5000, 18000)});
    for (int i = 0; i < kPresetCount; ++i) {
        step.texts.push_back(
            g.rng.chance(0.7)
                ? QStringLiteral("%1,%2,%3").arg(g.rng.below(256)).arg(g.rng.below(256)).arg(g.rng.below(256))
                : g.rng.pick<QString>({QString(), QStringLiteral("255,0"), QStringLiteral("300,-1,x"),
                                       QStringLiteral("1e9,nan,2.5"), QStringLiteral(",,,,"), g.typedNumber()}));
    }
    return step;
}

void runStep(World& world, const Step& step)
{
    world.answers.clear();
    if (step.kind == "start")
        runStart(world, step);
    else if (const StepKind* kind = findStepKind(step.kind))
        kind->run(world, step);
    world.answers.clear();
    // The window marks the frame changed after every event it hands over.
    world.editor.frameDirty = true;
}

} // namespace plotwell::soak
