#include "render/displayhandlers.h"

#include "tests/support/fakes.h"
#include "view/zoom.h"

#include <gtest/gtest.h>

#include <functional>

using namespace plotwell;
using namespace plotwell::test;

namespace {

// A world that counts how often the map was given the focus.
struct HandlerWorld : FakeWorld {
    HandlerWorld()
    {
        editor.focusMap = [this] { ++focused; };
    }
    int focused = 0;
};

TEST(DisplayHandlers, CheckBoxesSetTheirMemberRedrawAndFocusTheMap)
{
    const struct {
        const char* name;
        std::function<void(Editor&)> click;
        bool DisplayOptions::*box;
        bool DisplayOptions::*member;
        bool focuses;
    } cases[] = {
        {"lines", chkLinesClicked, &DisplayOptions::linesChecked, &DisplayOptions::showLines, true},
        {"labels", chkLabelsClicked, &DisplayOptions::labelsChecked, &DisplayOptions::showLabels, true},
        {"height", chkHeightClicked, &DisplayOptions::heightChecked, &DisplayOptions::heightFilterOn, true},
        {"invert", chkInvertClicked, &DisplayOptions::invertChecked, nullptr, false},
        {"flash", chkFlashClicked, &DisplayOptions::flashChecked, nullptr, true},
    };
    for (const auto& c : cases) {
        HandlerWorld w;
        DisplayOptions& options = w.editor.display;
        const DisplayOptions before = options;
        options.*c.box = !(options.*c.box);
        c.click(w.editor);
        if (c.member) {
            EXPECT_EQ(options.*c.member, options.*c.box) << c.name;
        }
        EXPECT_EQ(w.surface.frames(), 1) << c.name;
        EXPECT_EQ(w.focused, c.focuses ? 1 : 0) << c.name;

        // Clicking back restores the member.
        options.*c.box = before.*c.box;
        c.click(w.editor);
        if (c.member) {
            EXPECT_EQ(options.*c.member, before.*c.member) << c.name;
        }
    }
}

TEST(DisplayHandlers, HeightRangeAnswers)
{
    const struct {
        QString answer;
        float range;
    } cases[] = {
        {"0", 100},        {"-5", 100},           {"abc", 100},    {"", 100},     {"12.5", 12.5f},
        {"40 units", 40},  {"   7", 7},           {"2e1", 20},     {".5", 0.5f},  {"1,5", 1},
        {"+3", 3},         {"1e39", 100},         {"x12", 100},
    };
    for (const auto& c : cases) {
        HandlerWorld w;
        w.dialogs.answers.push_back(c.answer);
        chkHeightMouseDown(w.editor, kRightButton);
        EXPECT_EQ(w.editor.display.heightRange, c.range) << c.answer.toStdString();
        ASSERT_EQ(w.dialogs.prompts.size(), 1u);
        EXPECT_EQ(w.dialogs.prompts[0].text, QStringLiteral("Height filter range:"));
        EXPECT_EQ(w.dialogs.prompts[0].title, QStringLiteral("Enter new value"));
        EXPECT_EQ(w.dialogs.prompts[0].defaultText, QStringLiteral("100"));
        EXPECT_EQ(w.surface.frames(), 1) << "the prompt always redraws";
        EXPECT_EQ(w.focused, 0) << "the prompt does not move the focus";
    }
}

TEST(DisplayHandlers, HeightRangePromptLeavesTheFilterAsItWas)
{
    HandlerWorld w;
    w.editor.display.heightChecked = true;
    w.editor.display.heightFilterOn = true;
    w.dialogs.answers.push_back("50");
    chkHeightMouseDown(w.editor, kRightButton);
    EXPECT_TRUE(w.editor.display.heightChecked);
    EXPECT_TRUE(w.editor.display.heightFilterOn);
    EXPECT_EQ(w.editor.display.heightRange, 50);
}

TEST(DisplayHandlers, OtherButtonsDoNotPrompt)
{
    for (const int button : {kLeftButton, kMiddleButton}) {
        HandlerWorld w;
        chkHeightMouseDown(w.editor, button);
        EXPECT_TRUE(w.dialogs.prompts.empty());
        EXPECT_EQ(w.surface.frames(), 0);
    }
}

TEST(DisplayHandlers, HeightRangeIsOfferedWithTheLocalesSeparator)
{
    HandlerWorld w;
    w.editor.decimalSeparator = ',';
    w.editor.display.heightRange = 12.5f;
    // Accepting the offered text: the answer is read with "." only.
    w.dialogs.answers.push_back("12,5");
    chkHeightMouseDown(w.editor, kRightButton);
    EXPECT_EQ(w.dialogs.prompts.at(0).defaultText, QStringLiteral("12,5"));
    EXPECT_EQ(w.editor.display.heightRange, 12);
}

TEST(DisplayHandlers, HeightRangeIsOfferedWithSevenSignificantDigits)
{
    const struct {
        float range;
        const char* offered;
    } cases[] = {{100, "100"}, {12.5f, "12.5"}, {1.0f / 3, "0.3333333"}, {123456.78f, "123456.8"}};
    for (const auto& c : cases) {
        HandlerWorld w;
        w.editor.display.heightRange = c.range;
        chkHeightMouseDown(w.editor, kRightButton);
        EXPECT_EQ(w.dialogs.prompts.at(0).defaultText, QString::fromLatin1(c.offered));
    }
}

} // namespace
