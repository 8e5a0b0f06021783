#include "editor/displayhandlers.h"
#include "editor/edits.h"
#include "editor/viewcommands.h"
#include "view/displayoptions.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"
#include "view/zoom.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace plotwell;
using namespace plotwell::test;

namespace {

TEST(DisplayHandlers, CheckBoxesSetTheirMemberRedrawAndFocusTheMap)
{
    const struct {
        const char* name;
        std::function<void(Editor&, bool)> click;
        bool DisplayOptions::*box;
        bool DisplayOptions::*member; // none when the box is read directly
        bool focuses;
        std::size_t linesDrawn; // a selected line, over the two frames
    } cases[] = {
        {"lines", chkLinesClicked, &DisplayOptions::linesChecked, &DisplayOptions::showLines, true, 1},
        {"labels", chkLabelsClicked, &DisplayOptions::labelsChecked, &DisplayOptions::showLabels, true, 2},
        {"height", chkHeightClicked, &DisplayOptions::heightChecked, &DisplayOptions::heightFilterOn, true, 2},
        {"invert", chkInvertClicked, &DisplayOptions::invertChecked, nullptr, false, 2},
        {"flash", chkFlashClicked, &DisplayOptions::flashChecked, nullptr, true, 2},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        DisplayOptions& options = w.editor.display;
        w.editor.doc.setLineSelected(addTestLine(w.editor, 0, 0, 0, 10, 10, 0, kBlack), true);
        for (int click = 1; click <= 2; ++click) {
            const bool checked = !(options.*c.box);
            c.click(w.editor, checked);
            EXPECT_EQ(options.*c.box, checked) << c.name;
            EXPECT_TRUE(!c.member || options.*c.member == options.*c.box) << c.name;
            EXPECT_EQ(w.surface.frames(), click) << c.name;
            EXPECT_EQ(w.focused, c.focuses ? click : 0) << c.name;
        }
        EXPECT_EQ(w.surface.only(RecordingSurface::Op::Line).size(), c.linesDrawn) << c.name;
    }
}

TEST(DisplayHandlers, TheRightButtonAsksForTheHeightRangeAndTakesItsLeadingNumber)
{
    const struct {
        float range;
        char separator;
        QString answer;
        const char* offered;
        float result;
    } cases[] = {
        {100, '.', "0", "100", 100},
        {100, '.', "-5", "100", 100},
        {100, '.', "abc", "100", 100},
        {100, '.', "12.5", "100", 12.5f},
        {100, '.', "40 units", "100", 40},
        {100, '.', "   7", "100", 7},
        {100, '.', ".5", "100", 0.5f},
        {100, '.', "1,5", "100", 1},
        {100, '.', "+3", "100", 3},
        {100, '.', "1e39", "100", 100},
        // Offered in the locale's form with seven digits; the answer is read with "." only.
        {12.5f, ',', "12,5", "12,5", 12},
        {1.0f / 3, '.', "", "0.3333333", 1.0f / 3},
        {123456.78f, '.', "", "123456.8", 123456.78f},
    };
    for (const auto& c : cases) {
        FakeWorld w;
        DisplayOptions& options = w.editor.display;
        w.editor.view.decimalSeparator = c.separator;
        options.heightRange = c.range;
        options.heightChecked = options.heightFilterOn = true;
        w.dialogs.answers.push_back(c.answer);
        chkHeightMouseDown(w.editor, kRightButton);
        EXPECT_EQ(options.heightRange, c.result) << c.answer.toStdString();
        ASSERT_EQ(w.dialogs.prompts.size(), 1u);
        const auto& prompt = w.dialogs.prompts[0];
        EXPECT_EQ((QStringList{prompt.text, prompt.title, prompt.defaultText}),
                  (QStringList{"Height filter range:", "Enter new value", c.offered}));
        EXPECT_TRUE(options.heightChecked && options.heightFilterOn) << "the box keeps its value";
        EXPECT_EQ(w.surface.frames(), 1) << "the prompt always redraws";
        EXPECT_EQ(w.focused, 0) << "the prompt does not move the focus";
    }
    for (const int button : {kLeftButton, kMiddleButton}) {
        FakeWorld w;
        chkHeightMouseDown(w.editor, button);
        EXPECT_TRUE(w.dialogs.prompts.empty());
        EXPECT_EQ(w.surface.frames(), 0);
    }
}

TEST(DisplayHandlers, SlidersKeepToTheirRangesAndAskForAFrame)
{
    FakeWorld w;
    const DisplayOptions& d = w.editor.display;
    stereoSliderMoved(w.editor, StereoSlider::Separation, 140);
    stereoSliderMoved(w.editor, StereoSlider::SeparationByHeight, 55);
    stereoSliderMoved(w.editor, StereoSlider::Brightness, 300);
    EXPECT_EQ((std::vector<int>{d.stereo, d.stereoZ, d.brightness}), (std::vector<int>{100, 55, 255}));
    stereoSliderMoved(w.editor, StereoSlider::Brightness, -4);
    EXPECT_EQ(d.brightness, 0);
    EXPECT_TRUE(w.editor.frameDirty);
    EXPECT_EQ(w.surface.frames(), 0) << "the next frame reads them";
}

TEST(DisplayHandlers, TheEditMenusKeysUndoAndRedoBeforeTheMapSeesThem)
{
    FakeWorld w;
    Editor& e = w.editor;
    addTestLine(e, 0, 0, 0, 10, 10, 0, kBlack);
    e.doc.setLineSelected(0, true);
    mapKeyDown(e, Key::Delete, 0);
    ASSERT_EQ(e.doc.lineCount(), 0u);
    EXPECT_FALSE(editShortcutPressed(e, Key::Z, 0)) << "Z alone is the map's";
    EXPECT_FALSE(editShortcutPressed(e, Key::Y, kCtrlMask | kShiftMask));
    EXPECT_EQ(e.doc.lineCount(), 0u);
    EXPECT_TRUE(editShortcutPressed(e, Key::Z, kCtrlMask));
    EXPECT_EQ(e.doc.lineCount(), 1u);
    EXPECT_TRUE(editShortcutPressed(e, Key::Y, kCtrlMask));
    EXPECT_EQ(e.doc.lineCount(), 0u);
    EXPECT_TRUE(editShortcutPressed(e, Key::Z, kCtrlMask));
    EXPECT_TRUE(editShortcutPressed(e, Key::Z, kCtrlMask | kShiftMask));
    EXPECT_EQ(e.doc.lineCount(), 0u);
}

} // namespace
