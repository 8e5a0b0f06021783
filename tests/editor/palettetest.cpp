#include "palette/palette.h"
#include "editor/palettecommands.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"
#include "view/zoom.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

struct PaletteWorld : FakeWorld {
    PaletteWorld()
    {
        addTestLine(editor, 0, 0, 0, 10, 10, 0, {1, 1, 1});
        addTestLine(editor, 0, 0, 0, 10, 10, 0, {2, 2, 2});
        addTestLabel(editor, 0, 0, 0, {3, 3, 3}, "Chosen");
        editor.doc.setLineSelected(1, true);
        editor.doc.setLabelSelected(0, true);
    }
    // The colour of the unselected line, the selected line and the selected label.
    std::vector<int> colours() const
    {
        const auto v = [](const auto& r) { return int(ColorRGB{r.r, r.g, r.b}.value()); };
        return {v(editor.doc.lines()[0]), v(editor.doc.lines()[1]), v(editor.doc.labels()[0])};
    }
};

TEST(ColourStrip, ADragReachesOneOfOneHundredAndOnePositions)
{
    const struct {
        float x;
        int value;
    } cases[] = {{0, 0},  {-500, 0},     {13.9f, 0},  {14, 3},     {28, 5},
                 {42, 8}, {697.5f, 128}, {1394, 252}, {1395, 255}, {99999, 255}};
    for (const auto& c : cases)
        EXPECT_EQ(stripValue(c.x), c.value) << c.x;
}

TEST(ColourStrip, DraggingSetsOneChannelAndRecoloursTheSelection)
{
    PaletteWorld w;
    Editor& e = w.editor;
    e.palette.activeColor = {0, 40, 50};
    stripMouseMove(e, 0, kLeftButton, kStripWidth / 2);
    EXPECT_EQ(e.palette.activeColor, (ColorRGB{128, 40, 50}));
    EXPECT_EQ(e.palette.stripCaptions[0] + e.palette.stripCaptions[1] + e.palette.stripCaptions[2],
              QStringLiteral("1284050"));
    const int active = int(ColorRGB{128, 40, 50}.value());
    EXPECT_EQ(w.colours(), (std::vector<int>{0x010101, active, active}));
    // Without the left button the strip only gives the focus back.
    stripMouseMove(e, 1, 0, 0);
    stripMouseMove(e, 1, kLeftButton | kRightButton, 0);
    EXPECT_EQ(e.palette.activeColor.g, 40);
    EXPECT_EQ(w.focused, 3);
}

TEST(ColourStrip, ADoubleClickTakesTheLeadingNumberOfTheAnswer)
{
    const struct {
        const char* answer; // nullptr: cancelled
        int green;
    } cases[] = {{nullptr, 0}, {"300", 40},  {"-1", 40},   {"7abc", 7},  {"1 2", 12},
                 {"12.5", 12}, {"13.5", 14}, {"255", 255}, {"2e2", 200}, {"1e999", 40}};
    for (const auto& c : cases) {
        PaletteWorld w;
        Editor& e = w.editor;
        e.palette.activeColor = {10, 40, 50};
        if (c.answer)
            w.dialogs.answers.push_back(QString::fromLatin1(c.answer));
        stripDoubleClicked(e, 1);
        ASSERT_EQ(w.dialogs.prompts.size(), 1u);
        EXPECT_EQ(w.dialogs.prompts[0].text, QStringLiteral("Set new value (0-255)"));
        EXPECT_EQ(w.dialogs.prompts[0].title, QStringLiteral("Enter Color value"));
        EXPECT_EQ(w.dialogs.prompts[0].defaultText, QStringLiteral("40"));
        EXPECT_EQ(e.palette.activeColor, (ColorRGB{10, std::uint8_t(c.green), 50})) << (c.answer ? c.answer : "cancel");
        const bool applied = c.green != 40;
        EXPECT_EQ(w.colours()[1] == int(e.palette.activeColor.value()), applied) << (c.answer ? c.answer : "cancel");
        EXPECT_EQ(w.focused, 1);
    }
}

TEST(Swatches, LeftTakesAPresetOtherButtonsStoreTheActiveColour)
{
    PaletteWorld w;
    Editor& e = w.editor;
    e.palette.activeColor = {10, 20, 30};
    // The extra buttons (back, forward) reach the swatch as no button of its own.
    swatchPressed(e, 5, 0);
    EXPECT_EQ(w.settings.get("colorPresets", "5", "none"), QStringLiteral("none"));
    EXPECT_EQ(e.palette.swatchColors[5], ColorRGB{});
    swatchPressed(e, 5, kRightButton);
    EXPECT_EQ(w.settings.get("colorPresets", "5", "none"), QStringLiteral("10,20,30"));
    EXPECT_EQ(w.settings.get("colorPresets", "23", "none"), QStringLiteral("0,0,0")) << "all 24 are written";
    EXPECT_EQ(e.palette.swatchColors[5], (ColorRGB{10, 20, 30}));
    EXPECT_EQ(w.colours(), (std::vector<int>{0x010101, 0x020202, 0x030303})) << "storing recolours nothing";

    e.palette.presetColors[7] = {200, 100, 0};
    swatchPressed(e, 7, kLeftButton);
    EXPECT_EQ(e.palette.activeColor, (ColorRGB{200, 100, 0}));
    EXPECT_EQ(w.colours(), (std::vector<int>{0x010101, 0x0064c8, 0x0064c8}));
    EXPECT_EQ(w.focused, 3);
}

TEST(Presets, SettingsValuesFillChannelsAndSwatchesEachOnItsOwn)
{
    const struct {
        const char* value; // nullptr: no such key
        ColorRGB preset;
        ColorRGB swatch;
    } cases[] = {
        {nullptr, {0, 0, 0}, {0, 0, 0}},
        {"255,0,0", {255, 0, 0}, {255, 0, 0}},
        {"255,0", {255, 0, 7}, {9, 9, 9}}, // b left alone, the swatch too
        {"300,20,30", {7, 20, 30}, {255, 20, 30}}, // too large for a channel, full for a swatch
        {"-5,20,30", {7, 20, 30}, {9, 9, 9}},
        {"red,green,blue", {7, 7, 7}, {9, 9, 9}},
        {" 12.5 ,13.5,1,99", {12, 14, 1}, {12, 14, 1}},
        {"", {7, 7, 7}, {9, 9, 9}},
    };
    for (const auto& c : cases) {
        MemorySettingsStore settings;
        if (c.value)
            settings.save("colorPresets", "4", QString::fromLatin1(c.value));
        Palette palette;
        palette.presetColors.fill({7, 7, 7});
        palette.swatchColors.fill({9, 9, 9});
        loadColorPresets(palette, settings);
        const char* what = c.value ? c.value : "missing";
        EXPECT_EQ(palette.presetColors[4], c.preset) << what;
        EXPECT_EQ(palette.swatchColors[4], c.swatch) << what;
        EXPECT_EQ(palette.presetColors[3], kBlack) << "a missing key reads as 0,0,0";
    }
}

TEST(Presets, ReadBackFromARealSettingsFile)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, dir.path());
    const QString file = dir.filePath(QStringLiteral("Plotwell/Plotwell.ini"));
    QDir().mkpath(dir.filePath(QStringLiteral("Plotwell")));

    // What the program writes, it reads back.
    QtSettingsStore store;
    Palette written;
    for (int i = 0; i < kPresetCount; ++i)
        written.presetColors[std::size_t(i)] = {std::uint8_t(i), std::uint8_t(10 * i), 255};
    saveColorPresets(written, store);
    Palette read;
    loadColorPresets(read, store);
    EXPECT_EQ(read.presetColors, written.presetColors);

    // A value typed into the file by hand without quotes reads as a list in Qt.
    QFile ini(file);
    ASSERT_TRUE(ini.open(QIODevice::WriteOnly | QIODevice::Truncate));
    ini.write("[colorPresets]\n0=1,2,3\n");
    ini.close();
    Palette typed;
    loadColorPresets(typed, QtSettingsStore());
    EXPECT_EQ(typed.presetColors[0], (ColorRGB{1, 2, 3}));
    EXPECT_EQ(typed.presetColors[1], kBlack);
}

TEST(BackgroundSwatch, TheMapTakesTheActiveColour)
{
    PaletteWorld w;
    Editor& e = w.editor;
    e.palette.activeColor = {1, 1, 1};
    backgroundSwatchClicked(e);
    EXPECT_EQ(w.surface.backColor(), (ColorRGB{1, 1, 1}));
    EXPECT_EQ(e.palette.backgroundSwatch, (ColorRGB{1, 1, 1}));
    EXPECT_EQ(w.focused, 1);
}

} // namespace
