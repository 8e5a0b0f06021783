#include "render/underlay.h"
#include "editor/displayhandlers.h"
#include "editor/underlaycommands.h"

#include "platform/qimagesurface.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"

#include <QBuffer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

using Op = RecordingSurface::Op;

QImage solid(int w, int h, QRgb colour)
{
    QImage image(w, h, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

TEST(Underlay, PaintedFromTheTopLeftStretchedOrInItsProportions)
{
    const struct {
        int w, h;
        bool aspect;
        QRectF target;
    } cases[] = {
        {1000, 500, true, {0, 0, 6000, 3000}}, {1000, 500, false, {0, 0, 6000, 6000}},
        {500, 1000, true, {0, 0, 3000, 6000}}, {700, 700, true, {0, 0, 6000, 6000}},
        {300, 200, true, {0, 0, 6000, 4000}},
    };
    for (const auto& c : cases) {
        UnderlayState underlay;
        underlay.picture = solid(c.w, c.h, qRgb(1, 2, 3));
        underlay.aspectChecked = c.aspect;
        EXPECT_EQ(underlayTarget(underlay, 6000, 6000), c.target) << c.w << "x" << c.h << " " << c.aspect;
    }
}

TEST(Underlay, TheMeshIsORedOverThePictureOnlyWithTheTracingPaper)
{
    UnderlayState underlay;
    underlay.picture = solid(40, 20, qRgb(0x20, 0x40, 0x80));
    for (const bool tracing : {false, true}) {
        underlay.tracingPaperOn = tracing;
        RecordingSurface recorded;
        recorded.resize(60 * 15, 60 * 15);
        paintUnderlay(recorded, underlay);
        const auto pictures = recorded.only(Op::Picture);
        ASSERT_EQ(pictures.size(), tracing ? 2u : 1u);
        EXPECT_EQ(pictures[0].rasterOp, RasterOp::Copy);
        if (tracing) {
            EXPECT_EQ(pictures[1].rasterOp, RasterOp::Or);
        }

        QImageSurface surface(60 * 15, 60 * 15);
        paintUnderlay(surface, underlay);
        const QImage& image = surface.image();
        // The picture fills the width, 30 pixels high; every other 2 x 2 cell is white.
        EXPECT_EQ(image.pixel(0, 0), tracing ? qRgb(255, 255, 255) : qRgb(0x20, 0x40, 0x80));
        EXPECT_EQ(image.pixel(1, 1), image.pixel(0, 0));
        EXPECT_EQ(image.pixel(2, 0), qRgb(0x20, 0x40, 0x80));
        EXPECT_EQ(image.pixel(2, 2), image.pixel(0, 0));
        EXPECT_EQ(image.pixel(56, 28), tracing ? qRgb(255, 255, 255) : qRgb(0x20, 0x40, 0x80));
        EXPECT_EQ(image.pixel(59, 29), qRgb(0x20, 0x40, 0x80));
        EXPECT_EQ(image.pixel(10, 45), qRgb(255, 255, 255)) << "below the picture: the background";
    }
    // The mesh is 1024 x 768 pixels, white at the top left.
    EXPECT_EQ(meshPicture().size(), QSize(1024, 768));
    EXPECT_EQ(meshPicture().pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(meshPicture().pixel(1023, 765), qRgb(0, 0, 0));
}

struct UnderlayWorld : FakeWorld {
    UnderlayWorld()
    {
        editor.underlay.picture = solid(5, 5, qRgb(9, 9, 9));
        editor.underlay.underlayOn = false;
    }
};

TEST(Underlay, APictureThatCannotBeReadChangesNothingButTheFolder)
{
    QTemporaryDir dir;
    const auto write = [&](const QString& name, const QByteArray& bytes) {
        return QDir::toNativeSeparators(writeBytes(dir.filePath(name), bytes));
    };
    QByteArray png;
    {
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        solid(64, 64, qRgb(200, 0, 0)).save(&buffer, "PNG");
    }
    // A PNG header that claims 30000 x 30000 pixels.
    QByteArray huge = png.left(33);
    huge[16] = 0, huge[17] = 0, huge[18] = char(0x75), huge[19] = char(0x30);
    huge[20] = 0, huge[21] = 0, huge[22] = char(0x75), huge[23] = char(0x30);
    const QString files[] = {
        dir.filePath(QStringLiteral("missing.jpg")),
        write(QStringLiteral("notes.txt"), "L 1, 2, 3, 4, 5, 6, 7, 8, 9\n"),
        write(QStringLiteral("cut.png"), png.left(png.size() / 2)),
        write(QStringLiteral("huge.png"), huge),
        write(QStringLiteral("empty.bmp"), QByteArray()),
    };
    for (const QString& path : files) {
        UnderlayWorld w;
        const qint64 before = w.editor.underlay.picture.cacheKey();
        EXPECT_FALSE(loadUnderlay(w.editor, path)) << path.toStdString();
        EXPECT_EQ(w.editor.underlay.picture.cacheKey(), before) << path.toStdString();
        EXPECT_FALSE(w.editor.underlay.underlayOn);
        EXPECT_EQ(w.surface.frames(), 0);
        EXPECT_TRUE(w.dialogs.messages.empty());
        EXPECT_EQ(w.settings.get("settings", "previousImageFolder", "."),
                  QDir::toNativeSeparators(dir.path()) + QDir::separator());
    }
}

TEST(Underlay, OpenedFromTheMenuInTheLastPictureFolder)
{
    QTemporaryDir dir;
    const QString path = QDir::toNativeSeparators(dir.filePath(QStringLiteral("trace.bmp")));
    ASSERT_TRUE(solid(30, 20, qRgb(0, 200, 0)).save(path, "BMP"));
    UnderlayWorld w;
    w.settings.save("settings", "previousImageFolder", "/pictures/");
    w.fileDialog.answers = {QString(), path}; // cancelled, then chosen
    openUnderlayFromMenu(w.editor);
    EXPECT_FALSE(w.editor.underlay.underlayOn);
    openUnderlayFromMenu(w.editor);
    EXPECT_EQ(w.fileDialog.shownFolders, (QStringList{"/pictures/", "/pictures/"}));
    EXPECT_EQ(w.fileDialog.shownFilters.at(0),
              QStringLiteral("JPEG Images (*.jpg)|*.jpg|GIF Images (*.gif)|*.gif|"
                             "Bitmap Images (*.bmp)|*.bmp|All Files(*.*)|*.*"));
    EXPECT_EQ(w.editor.underlay.picture.size(), QSize(30, 20));
    EXPECT_TRUE(w.editor.underlay.underlayOn);
    EXPECT_EQ(w.surface.frames(), 1);
    closeUnderlay(w.editor);
    EXPECT_TRUE(w.editor.underlay.underlayOn) << "Off is what hides it";
}

TEST(Underlay, TheButtonsAndStereoSwitchIt)
{
    const struct {
        int button;
        bool on, tracing;
    } cases[] = {{0, true, false}, {1, true, true}, {2, false, false}};
    for (const auto& c : cases) {
        UnderlayWorld w;
        w.editor.underlay.tracingPaperOn = !c.tracing;
        backgroundButtonClicked(w.editor, c.button);
        EXPECT_EQ(w.editor.underlay.underlayOn, c.on);
        EXPECT_EQ(w.editor.underlay.tracingPaperOn, c.tracing);
        EXPECT_EQ(w.focused, 1);
        EXPECT_EQ(w.surface.frames(), 0) << "the next frame shows it";
    }

    UnderlayWorld w;
    w.editor.underlay.underlayOn = true;
    chkStereoClicked(w.editor, true);
    EXPECT_FALSE(w.editor.underlay.underlayOn);
    EXPECT_EQ(w.surface.backColor(), kBlack);
    EXPECT_EQ(w.editor.palette.backgroundSwatch, kWhite) << "the swatch keeps its colour";
    w.surface.setBackColor(kWhite);
    chkStereoClicked(w.editor, false);
    EXPECT_EQ(w.surface.backColor(), kWhite);
}

} // namespace
