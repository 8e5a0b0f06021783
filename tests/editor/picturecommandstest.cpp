#include "editor/picturecommands.h"
#include "editor/startup.h"
#include "editor/underlaycommands.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

// Each answer of the export dialog and the save dialog, and what it comes to:
// a picture of the given size, or a message and no file at all.
TEST(ExportPicture, WritesThePictureOrTellsWhyNot)
{
    const struct {
        const char* name;
        PictureArea area;
        QSize size;
        PictureFormat format;
        const char* answer; // the save dialog's answer, in the folder
        const char* written; // the file, empty when none
        QSize pixels; // its size
        const char* message; // part of the message, empty when none
        const char* map = "line"; // or "label" alone, or "" for nothing
    } cases[] = {
        {"whole map", PictureArea::WholeMap, {300, 200}, PictureFormat::Png, "a.png", "a.png", {300, 200}, ""},
        {"current view", PictureArea::CurrentView, {9, 9}, PictureFormat::Png, "b.PNG", "b.PNG", {453, 477}, ""},
        {"name without extension", PictureArea::WholeMap, {64, 64}, PictureFormat::Svg, "c", "c.svg", {}, ""},
        {"unknown extension",
         PictureArea::WholeMap,
         {64, 64},
         PictureFormat::Png,
         "d.jpg",
         "",
         {},
         "neither .png nor .svg"},
        {"unwritable",
         PictureArea::WholeMap,
         {64, 64},
         PictureFormat::Png,
         "none/e.png",
         "",
         {},
         "could not be written to"},
        {"size 0", PictureArea::WholeMap, {0, 64}, PictureFormat::Png, "f.png", "", {}, "from 1 to 32768 pixels"},
        {"too large",
         PictureArea::WholeMap,
         {32769, 64},
         PictureFormat::Png,
         "g.png",
         "",
         {},
         "from 1 to 32768 pixels"},
        {"one point",
         PictureArea::WholeMap,
         {64, 64},
         PictureFormat::Png,
         "h.png",
         "",
         {},
         "lies at one point",
         "label"},
        {"nothing shown", PictureArea::WholeMap, {64, 64}, PictureFormat::Png, "j.png", "", {}, "nothing to fit", ""},
        {"one pixel", PictureArea::WholeMap, {1, 1}, PictureFormat::Png, "i.png", "i.png", {1, 1}, ""},
        {"cancelled", PictureArea::WholeMap, {64, 64}, PictureFormat::Png, nullptr, "", {}, ""},
    };
    const QString startedIn = QDir::currentPath();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        QTemporaryDir dir;
        QDir::setCurrent(dir.path()); // where a suggested name alone would go
        FakeWorld w;
        const std::string map = c.map;
        if (map == "label")
            addTestLabel(w.editor, 5, 5, 0, kBlack, "Here");
        else if (map == "line")
            addTestLine(w.editor, 0, 0, 0, 100, 50, 0, kBlack);
        w.fileDialog.filter = "maps";
        if (c.answer)
            w.fileDialog.answers.push_back(dir.filePath(c.answer));
        w.pictureDialog.options = {c.area, c.size, c.format, false};
        w.editor.underlay.underlayOn = true; // shown, but left out when not asked for
        w.editor.underlay.picture = QImage(8, 8, QImage::Format_RGB32);
        w.editor.underlay.picture.fill(Qt::red);
        exportPictureFromMenu(w.editor);

        const QStringList files = QDir(dir.path()).entryList(QDir::Files | QDir::Hidden);
        EXPECT_EQ(files, *c.written ? QStringList{c.written} : QStringList{});
        if (c.format == PictureFormat::Png && *c.written) {
            const QImage png(dir.filePath(c.written));
            EXPECT_TRUE(png.size() == c.pixels && png.pixel(0, 0) != qRgb(255, 0, 0));
            EXPECT_NE(png.format(), QImage::Format_RGB32) << "a map of few colours is written with a colour table";
        }
        ASSERT_EQ(w.dialogs.messages.size(), *c.message ? 1u : 0u);
        if (*c.message) {
            EXPECT_TRUE(w.dialogs.messages[0].text.contains(c.message)) << w.dialogs.messages[0].text.toStdString();
        }
        // Problems found before the file is asked for are told first.
        const bool asked = !QString(c.message).contains("pixels") && map == "line";
        ASSERT_EQ(w.fileDialog.saves, asked ? 1 : 0);
        if (asked) {
            EXPECT_TRUE(w.fileDialog.shownFilters.back().startsWith(c.format == PictureFormat::Png ? "PNG" : "SVG"))
                << "the chosen format is offered first";
        }
        EXPECT_TRUE(w.fileDialog.filter == "maps" && !w.fileDialog.confirmOverwrite)
            << "the map commands' dialog is left as it was";
    }
    QDir::setCurrent(startedIn);
}

TEST(ExportPicture, TheStartUpPictureNeverGoesWithTheMapAPictureTheUserOpenedDoes)
{
    QTemporaryDir dir;
    FakeWorld w;
    startUp(w.editor);
    addTestLine(w.editor, 0, 0, 0, 100, 50, 0, kBlack);
    w.pictureDialog.options = {PictureArea::CurrentView, {9, 9}, PictureFormat::Png, true};
    const auto exportTo = [&](const char* name) {
        w.fileDialog.answers.push_back(dir.filePath(name));
        exportPictureFromMenu(w.editor);
        return QImage(dir.filePath(name)).pixel(200, 200); // away from the line
    };
    w.surface.setBackColor(kWhite);
    EXPECT_EQ(exportTo("start.png"), qRgb(255, 255, 255));
    EXPECT_FALSE(w.pictureDialog.underlayOffered);

    QImage red(8, 8, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(dir.filePath("red.png")));
    ASSERT_TRUE(loadUnderlay(w.editor, dir.filePath("red.png")));
    EXPECT_EQ(exportTo("traced.png"), qRgb(255, 0, 0));
    EXPECT_TRUE(w.pictureDialog.underlayOffered);
}

} // namespace
