#include "editor/mapevents.h"
#include "editor/viewcommands.h"
#include "tools/tooldispatch.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"
#include "view/zoom.h"

#include <gtest/gtest.h>

#include <string>

using namespace plotwell;
using namespace plotwell::test;

namespace {

const char* const kToolNames[] = {"Pointer", "Pan", "Select", "Line", "Freehand", "Label", "Crosshair", "Move"};

// An editor at scale 1 with no offset, so surface twips are world units, and
// one line from (0, 0) to (100, 100) under the point (50, 50).
struct Scene : FakeWorld {
    Scene(ToolId tool)
    {
        addTestLine(editor, 0, 0, 0, 100, 100, 0, kBlue);
        toolIconClicked(editor, tool);
        editor.view.zoomAnchor = {-1, -1};
        surface.calls.clear();
    }
    ToolDispatcher& tools() { return editor.tools; }
};

TEST(Dispatch, PressByToolButtonAndCtrl)
{
    enum Effect { None = 0, Anchor = 1, Toggle = 2, PanFrom = 4, Chain = 8, Caption = 16, Mark = 32, Prompt = 64 };
    struct Case {
        ToolId tool;
        int button;
        bool ctrl;
        int effects;
    };
    std::vector<Case> cases;
    const int leftPress[] = {Anchor | Toggle, Anchor | PanFrom, Anchor | Toggle, Anchor | Chain,
                             Anchor,          Anchor | Caption, Anchor | Mark,   Anchor};
    for (const ToolId tool : kAllTools) {
        const int left = leftPress[int(tool)];
        cases.push_back({tool, kLeftButton, false, left});
        // With Ctrl held a press changes no selection but still sets the zoom anchor.
        cases.push_back({tool, kLeftButton, true, left & ~Toggle});
        // The right button pans in every tool but opens the shift prompt of the Crosshair.
        const int right = tool == ToolId::Crosshair ? Prompt : Anchor | PanFrom;
        cases.push_back({tool, kRightButton, false, right});
        cases.push_back({tool, kRightButton, true, right});
        cases.push_back({tool, kMiddleButton, false, None});
    }
    for (const Case& c : cases) {
        Scene s(c.tool);
        Editor& e = s.editor;
        e.keys.ctrlKeyDown = c.ctrl;
        const SurfacePoint p{50, 50};
        mapMouseDown(e, c.button, p);
        int seen = 0;
        seen |= e.view.zoomAnchor.x == 50 ? Anchor : 0;
        seen |= e.doc.lines()[0].selected ? Toggle : 0;
        seen |= s.tools().pan().anchor().x == 50 ? PanFrom : 0;
        seen |= s.tools().line().lineInProgress() ? Chain : 0;
        seen |= s.tools().label().captionBox().visible ? Caption : 0;
        seen |= s.tools().crosshair().lines().visible ? Mark : 0;
        seen |= s.dialogs.prompts.empty() ? 0 : Prompt;
        EXPECT_EQ(seen, c.effects) << kToolNames[int(c.tool)] << " button " << c.button << (c.ctrl ? " ctrl" : "");
    }
}

TEST(Dispatch, AClickOnNothingClearsTheSelectionUnlessCtrlIsHeld)
{
    for (const bool ctrl : {false, true}) {
        Scene s(ToolId::Select);
        Editor& e = s.editor;
        addTestLabel(e, 500, 500, 0, kBlue, "Somewhere");
        e.doc.setLineSelected(0, true);
        e.doc.setLabelSelected(0, true);
        e.keys.ctrlKeyDown = ctrl;
        mapMouseDown(e, kLeftButton, {300, 20});
        EXPECT_EQ(e.doc.lines()[0].selected, ctrl);
        EXPECT_EQ(e.doc.labels()[0].selected, ctrl);
        e.keys.ctrlKeyDown = false;
        e.doc.setLineSelected(0, true);
        mapMouseDown(e, kLeftButton, {50, 50});
        EXPECT_FALSE(e.doc.lines()[0].selected) << "a click on a selected line deselects it";
    }
}

TEST(Dispatch, MoveByToolAndButtons)
{
    const int kBoth = kLeftButton | kRightButton;
    for (const ToolId tool : kAllTools) {
        for (const int buttons : {0, kLeftButton, kRightButton, kBoth}) {
            Scene s(tool);
            Editor& e = s.editor;
            const std::string what = std::string(kToolNames[int(tool)]) + " buttons " + std::to_string(buttons);
            // Pressed off the line; the drag then passes over it.
            mapMouseDown(e, buttons == kRightButton ? kRightButton : kLeftButton, {10, 300});
            s.dialogs.prompts.clear();
            e.tools.state.holdDrawing = true;
            const float offsetBefore = e.view.offsetX;
            const std::size_t linesBefore = e.doc.lineCount();
            mapMouseMove(e, buttons, {50, 50});
            mapMouseMove(e, buttons, {110, 50});

            const bool rightDrag = buttons == kRightButton;
            const bool panning = rightDrag || (tool == ToolId::Pan && buttons == kLeftButton);
            // The Crosshair's right press prompts instead of anchoring the pan,
            // so its drag pans from the last anchor, here the surface origin.
            const bool fromOrigin = rightDrag && tool == ToolId::Crosshair;
            EXPECT_EQ(e.view.offsetX - offsetBefore, fromOrigin ? 110 : panning ? 100 : 0) << what;
            // Every move shows where the pointer is, in the view as it was.
            EXPECT_EQ(e.view.lastMousePoint.x, 110) << what;
            EXPECT_EQ(e.view.readout.x,
                      fromOrigin    ? QStringLiteral("60")
                          : panning ? QStringLiteral("70")
                                    : QStringLiteral("110"))
                << what;
            const bool movePointer = tool == ToolId::Pan || tool == ToolId::Move;
            EXPECT_EQ(e.tools.state.mapCursor == MapCursor::Move, rightDrag || movePointer) << what;
            // A move holds the frame only for the crosshair's mark and the line's rubber band.
            const bool held = (tool == ToolId::Crosshair && !rightDrag) || (tool == ToolId::Line && buttons == 0);
            EXPECT_EQ(e.tools.state.holdDrawing, held) << what;
            EXPECT_EQ(s.tools().crosshair().lines().visible, tool == ToolId::Crosshair && !rightDrag) << what;
            const bool dragging = buttons == kLeftButton;
            EXPECT_EQ(e.doc.lines()[0].selected, tool == ToolId::Pointer && dragging) << what;
            EXPECT_EQ(e.selection.box.visible, tool == ToolId::Select && dragging) << what;
            EXPECT_EQ(e.doc.lineCount() - linesBefore, tool == ToolId::Freehand && dragging ? 1u : 0u) << what;
            mapMouseMove(e, 0, {120, 50});
            EXPECT_EQ(e.tools.state.mapCursor == MapCursor::Move, movePointer) << what << ", then no button";
            EXPECT_TRUE(s.dialogs.prompts.empty()) << what;
        }
    }
}

TEST(Dispatch, ReleaseEndsTheRectangleWhateverTheTool)
{
    Scene s(ToolId::Select);
    Editor& e = s.editor;
    mapMouseDown(e, kLeftButton, {-10, -10});
    mapMouseMove(e, kLeftButton, {20, 30});
    EXPECT_TRUE(e.selection.box.visible);
    toolIconClicked(e, ToolId::Freehand); // a change of tool leaves the rectangle
    mapMouseUp(e);
    EXPECT_FALSE(e.selection.box.visible);
    EXPECT_TRUE(e.doc.lines()[0].selected);
}

TEST(Dispatch, ChoosingAToolRedrawsAndEndsTheMarkButNotTheChain)
{
    Scene s(ToolId::Line);
    Editor& e = s.editor;
    mapMouseDown(e, kLeftButton, {10, 10});
    toolIconClicked(e, ToolId::Crosshair);
    mapMouseMove(e, 0, {20, 20});
    mapMouseDown(e, kLeftButton, {20, 20});
    EXPECT_TRUE(e.tools.state.holdDrawing);
    const int frames = s.surface.frames();
    for (const ToolId next : {ToolId::Crosshair, ToolId::Line}) {
        toolIconClicked(e, next);
        EXPECT_FALSE(e.tools.state.holdDrawing);
        EXPECT_FALSE(s.tools().crosshair().lines().visible);
    }
    EXPECT_EQ(s.surface.frames(), frames + 2);
    // Back in the Line tool, the next click goes on from the chain's last point.
    mapMouseDown(e, kLeftButton, {40, 10});
    ASSERT_EQ(e.doc.lineCount(), 2u);
    EXPECT_EQ(e.doc.lines()[1].p1.x, 10);
    EXPECT_EQ(e.doc.lines()[1].p2.x, 40);
    // Escape closes the chain whatever tool is chosen.
    toolIconClicked(e, ToolId::Pan);
    mapKeyDown(e, Key::Escape, 0);
    EXPECT_FALSE(s.tools().line().lineInProgress());
}

TEST(Dispatch, TheCrosshairPrintsCopiesAndKeepsItsMark)
{
    Scene s(ToolId::Crosshair);
    Editor& e = s.editor;
    e.view.offsetX = 100;
    e.view.currentScale = 2;
    mapMouseMove(e, 0, {300, 250});
    const int frames = s.surface.frames();
    mapMouseDown(e, kLeftButton, {300, 250});
    EXPECT_EQ(s.surface.frames(), frames + 2) << "a fresh frame, then the printed location";
    EXPECT_EQ(s.clipboard.text, QStringLiteral("Loc: -125 , -100"));
    const auto printed = s.surface.only(RecordingSurface::Op::Print);
    ASSERT_EQ(printed.size(), 1u);
    EXPECT_EQ(printed[0].text, "Loc: -125 , -100");
    EXPECT_EQ(printed[0].pen, kRed);
    const auto font = s.surface.only(RecordingSurface::Op::Font).back();
    EXPECT_TRUE(font.a == 12 && font.b == 1) << "12-point bold";
    const auto at = s.surface.only(RecordingSurface::Op::TextPosition).back();
    EXPECT_TRUE(at.a == 320 && at.b == -50);
    // Moving on in the Crosshair tool keeps the mark; a middle press only hides the lines.
    mapMouseMove(e, 0, {400, 400});
    EXPECT_TRUE(e.tools.state.holdDrawing && s.tools().crosshair().lines().visible);
    mapMouseDown(e, kMiddleButton, {400, 400});
    EXPECT_FALSE(s.tools().crosshair().lines().visible);
    EXPECT_TRUE(e.tools.state.holdDrawing);
    Scene t(ToolId::Crosshair);
    mapMouseDown(t.editor, kLeftButton, {300, 250});
    ASSERT_TRUE(t.tools().crosshair().lines().visible);
    mapMouseMove(t.editor, kRightButton, {320, 250}); // a right drag pans without the lines
    EXPECT_FALSE(t.tools().crosshair().lines().visible);
}

TEST(ViewKeys, ArrowsAndZoomKeysByModifier)
{
    struct Case {
        int key;
        int shift;
        float dx, dy, scale;
    };
    const Case cases[] = {
        {Key::Left, 0, -10, 0, 1},
        {Key::Right, 0, 10, 0, 1},
        {Key::Up, 0, 0, -10, 1},
        {Key::Down, 0, 0, 10, 1},
        {Key::Right, kShiftMask, 500, 0, 1},
        {Key::Right, kShiftMask | kCtrlMask, 10, 0, 1},
        {Key::Down, kShiftMask | kAltMask, 0, 10, 1},
        {Key::PadPlus, 0, 0, 0, 1.01f},
        {Key::Plus, kShiftMask, 0, 0, 1.1f},
        {Key::PadMinus, 0, 0, 0, 0.99f},
        {Key::Minus, kShiftMask, 0, 0, 0.9f},
        {Key::Minus, kCtrlMask | kShiftMask, 0, 0, 0.99f},
    };
    for (const Case& c : cases) {
        FakeWorld w;
        Editor& e = w.editor;
        addTestLine(e, 10, 20, 0, 30, 40, 0, kBlue);
        mapKeyDown(e, c.key, c.shift);
        EXPECT_EQ(e.view.offsetX, c.dx) << c.key << " shift " << c.shift;
        EXPECT_EQ(e.view.offsetY, c.dy) << c.key << " shift " << c.shift;
        EXPECT_FLOAT_EQ(e.view.currentScale, c.scale) << c.key << " shift " << c.shift;
        EXPECT_FLOAT_EQ(e.doc.lines()[0].p2.sx, 30 * c.scale) << "the points follow the scale";
        EXPECT_EQ(w.surface.frames(), 1) << "every key redraws";
    }
}

TEST(ViewKeys, TheKeyboardZoomHasItsOwnLimits)
{
    FakeWorld w;
    Editor& e = w.editor;
    const float marker = e.view.zoom.markerX1;
    for (int i = 0; i < 200; ++i)
        mapKeyDown(e, Key::PadMinus, 0);
    EXPECT_FLOAT_EQ(e.view.currentScale, 0.01f);
    EXPECT_EQ(e.view.zoom.caption, QStringLiteral("Scale: 0.01"));
    e.view.currentScale = 100;
    mapKeyDown(e, Key::Plus, 0);
    EXPECT_FLOAT_EQ(e.view.currentScale, 100.01f);
    EXPECT_EQ(e.view.zoom.markerX1, marker);
}

TEST(ViewKeys, FlagsFollowTheKeysAndShiftOnlyAlone)
{
    FakeWorld w;
    Editor& e = w.editor;
    mapKeyDown(e, Key::Ctrl, kCtrlMask);
    mapKeyDown(e, Key::Z, kCtrlMask);
    EXPECT_TRUE(e.keys.ctrlKeyDown && !e.keys.zKey) << "Ctrl+Z is Undo, not Z held for the wheel";
    mapKeyDown(e, Key::Z, 0);
    EXPECT_TRUE(e.keys.zKey);
    mapKeyDown(e, Key::Shift, kShiftMask | kCtrlMask);
    EXPECT_FALSE(e.keys.theShiftKeyIsDown) << "Shift with Ctrl is not Shift";
    mapKeyUp(e, Key::Ctrl, kShiftMask);
    mapKeyDown(e, 'A', kShiftMask);
    EXPECT_TRUE(e.keys.theShiftKeyIsDown);
    EXPECT_FALSE(e.keys.ctrlKeyDown);
    mapKeyUp(e, 'A', kShiftMask); // a letter released while Shift is held
    EXPECT_TRUE(e.keys.theShiftKeyIsDown && e.keys.zKey) << "only Z's own release lets Z go";
    mapKeyUp(e, Key::Shift, 0);
    EXPECT_FALSE(e.keys.theShiftKeyIsDown);
    mapKeyDown(e, Key::Alt, kAltMask);
    mapKeyUp(e, Key::Z, kAltMask);
    EXPECT_TRUE(e.keys.altKeyDown && !e.keys.zKey);
}

} // namespace
