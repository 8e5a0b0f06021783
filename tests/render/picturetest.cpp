#include "platform/qimagesurface.h"
#include "platform/twips.h"
#include "render/picturefile.h"
#include "render/pictureframe.h"
#include "view/viewcontrol.h"

#include "tests/support/fakes.h"
#include "tests/support/records.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

using namespace plotwell;
using namespace plotwell::test;

namespace {

constexpr ColorRGB kGreen{0, 255, 0};

// Fitted into 240 x 140 pixels with a margin of 16, the box of 100 x 50 world
// units takes 2.08 pixels a unit: 208 x 104 pixels from (16, 18).
struct SmallMap : FakeWorld {
    SmallMap()
    {
        addTestLine(editor, 0, 0, 0, 100, 0, 0, kRed);
        addTestLine(editor, 0, 50, 0, 100, 50, 0, kBlue);
        addTestLine(editor, 0, 500, 0, 100, 500, 0, kGreen, 1); // on a hidden layer: neither drawn nor fitted
        addTestLabel(editor, 0, 0, 0, kBlack, "Camp Fire\x01"); // XML holds no control characters
        editor.doc.setLineSelected(0, true); // a selected pure red would flash cyan
    }
    FrameSource map() const { return {editor.doc, editor.view, editor.display, editor.underlay}; }
    QString write(PictureFormat format, PictureOptions options = {})
    {
        if (options.area == PictureArea::WholeMap)
            options.size = QSize(240, 140);
        const QString path = dir.filePath(format == PictureFormat::Png ? "map.png" : "map.svg");
        const PictureFrame frame = pictureFrame(options, map());
        EXPECT_TRUE(frame.error.isEmpty()) << frame.error.toStdString();
        EXPECT_EQ(writePicture(path, format, frame, map(), kWhite), QString());
        return path;
    }
    QTemporaryDir dir;
};

TEST(Picture, APngOfTheWholeMapShowsTheVisibleRecordsFittedInTheirOwnColours)
{
    SmallMap m;
    const QImage png(m.write(PictureFormat::Png));
    ASSERT_EQ(png.size(), QSize(240, 140));
    const struct {
        QPoint at;
        ColorRGB colour;
    } pixels[] = {{{120, 18}, kRed}, {{220, 18}, kRed},  {{120, 122}, kBlue}, {{120, 70}, kWhite},
                  {{2, 2}, kWhite},  {{120, 8}, kWhite}, {{237, 122}, kWhite}};
    for (const auto& p : pixels)
        EXPECT_EQ(png.pixel(p.at), toQColor(p.colour).rgb()) << p.at.x() << "," << p.at.y();
}

TEST(Picture, AFlatMapIsFittedWithItsLabelsTextAndCentred)
{
    // A level line with the label at its right end, and an upright one with it at its lower end.
    for (const bool upright : {false, true}) {
        SCOPED_TRACE(upright ? "upright" : "level");
        SmallMap m;
        m.editor.doc.takeRecordsFrom(0, 0);
        const float endX = upright ? 40 : 100, endY = upright ? 100 : 40;
        addTestLine(m.editor, upright ? 40 : 0, upright ? 0 : 40, 0, endX, endY, 0, kBlue);
        addTestLabel(m.editor, endX, endY, 0, kBlack, "Gate");
        const QImage png(m.write(PictureFormat::Png, {PictureArea::WholeMap, {}, PictureFormat::Png, false}));
        int left = png.width(), right = -1, top = png.height(), bottom = -1;
        for (int y = 0; y < png.height(); ++y)
            for (int x = 0; x < png.width(); ++x)
                if (png.pixel(x, y) != qRgb(255, 255, 255))
                    left = std::min(left, x), right = std::max(right, x), top = std::min(top, y),
                    bottom = std::max(bottom, y);
        ASSERT_LT(top, bottom) << "something is drawn";
        // The text's ink ends a few pixels short of its advance and its line height.
        EXPECT_NEAR(left, png.width() - 1 - right, 8) << "as much room left of the line as right of the text";
        EXPECT_NEAR(top, png.height() - 1 - bottom, 8) << "as much room above the line as below the text";
    }
}

// The elements of an SVG drawing, each with the attributes its groups give it.
std::vector<QXmlStreamAttributes> svgElements(const QString& path, const QString& name, QString* text = nullptr)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    std::vector<QXmlStreamAttributes> groups{{}}, found;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            QXmlStreamAttributes attributes = groups.back();
            for (const QXmlStreamAttribute& a : xml.attributes()) {
                attributes.erase(std::remove_if(attributes.begin(), attributes.end(),
                                                [&](const auto& b) { return b.name() == a.name(); }),
                                 attributes.end());
                attributes.append(a);
            }
            groups.push_back(attributes);
            if (xml.name() == name) {
                found.push_back(attributes);
                if (text) {
                    *text += xml.readElementText() + QLatin1Char('|');
                    groups.pop_back(); // its end was read with the text
                }
            }
        } else if (xml.isEndElement()) {
            groups.pop_back();
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return found;
}

QString attr(const QXmlStreamAttributes& a, const char* name)
{
    return a.value(QLatin1String(name)).toString();
}

QString layerOf(const QXmlStreamAttributes& a)
{
    return a.value(QStringLiteral("http://www.inkscape.org/namespaces/inkscape"), QStringLiteral("label")).toString();
}

TEST(Picture, AnSvgDrawsEachLayerAsAGroupOfLinesAndTexts)
{
    SmallMap m;
    addTestLabel(m.editor, 50, 0, 0, kBlue, "Bank", 2);
    m.editor.display.layerChecked[2] = true;
    m.editor.doc.homes[2].caption = QStringLiteral("zone_2.txt");
    const QString path = m.write(PictureFormat::Svg);
    QStringList lines;
    for (const QXmlStreamAttributes& a : svgElements(path, "line"))
        lines << QStringList{layerOf(a), attr(a, "x1") + "," + attr(a, "y1"), attr(a, "x2") + "," + attr(a, "y2"),
                             attr(a, "stroke"), attr(a, "stroke-width")}
                     .join(' ');
    EXPECT_EQ(lines, QStringList({"Base Layer 16,18 224,18 #ff0000 2", "Base Layer 16,122 224,122 #0000ff 2"}));

    QString text;
    const auto texts = svgElements(path, "text", &text);
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(text, "Camp_Fire?|Bank|");
    EXPECT_EQ(layerOf(texts[0]) + " " + attr(texts[0], "fill") + " " + attr(texts[0], "x"), "Base Layer #000000 16");
    // The label's top is at its place (y 18); SVG places the text by its baseline.
    const double size = attr(texts[0], "font-size").toDouble(), baseline = attr(texts[0], "y").toDouble();
    EXPECT_GT(baseline, 18 + size / 2);
    EXPECT_LT(baseline, 18 + size * 1.3);
    EXPECT_EQ(layerOf(texts[1]) + " " + attr(texts[1], "fill"), "zone_2.txt #0000ff");
    const auto marks = svgElements(path, "circle");
    ASSERT_EQ(marks.size(), 2u);
    EXPECT_EQ(attr(marks[0], "cx") + "," + attr(marks[0], "cy"), "16,18");
    EXPECT_TRUE(svgElements(path, "image").empty()) << "no underlay was asked for";
}

TEST(Picture, AnSvgCarriesTheUnderlayAsAnEmbeddedPngBeneathTheLayers)
{
    SmallMap m;
    QImage red(4, 4, QImage::Format_RGB32);
    red.fill(qRgb(255, 0, 0));
    m.editor.underlay.picture = red;
    m.editor.underlay.underlayOn = true;
    const QString path = m.write(PictureFormat::Svg);
    const auto images = svgElements(path, "image");
    ASSERT_EQ(images.size(), 1u);
    EXPECT_EQ(layerOf(images[0]) + " " + attr(images[0], "width") + "x" + attr(images[0], "height"),
              "Underlay 240x140");
    const QString href =
        images[0].value(QStringLiteral("http://www.w3.org/1999/xlink"), QStringLiteral("href")).toString();
    ASSERT_TRUE(href.startsWith("data:image/png;base64,"));
    const QImage picture = QImage::fromData(QByteArray::fromBase64(href.mid(22).toLatin1()), "PNG");
    ASSERT_EQ(picture.size(), QSize(240, 140));
    EXPECT_EQ(picture.pixel(120, 70), qRgb(255, 0, 0));
    EXPECT_EQ(svgElements(path, "line").size(), 2u) << "the lines are still drawn over it";
}

TEST(Picture, TheCurrentViewIsThePictureTheScreenShows)
{
    QImageSurface screen(300 * 15, 200 * 15);
    EditorOn w(screen);
    Editor& e = w.editor;
    addTestLine(e, -20, -10, 5, 40, 30, 80, kBlue);
    addTestLine(e, 10, 10, 500, 60, 10, 0, kGreen); // above the height filter
    addTestLabel(e, 15, 5, 20, kRed, "Bank");
    addTestLabel(e, 30, 20, 0, kBlue, "Door", 1);
    e.display.layerChecked[1] = true;
    e.display.heightFilterOn = true;
    setCurrentScale(e.view, e.doc, 40);
    e.view.offsetX = 1200;
    e.view.offsetY = 900;
    // Last with no lines: the label markers keep the pen the screen last drew with.
    for (const auto& [stereo, lines] : {std::pair{false, true}, {true, true}, {false, false}}) {
        e.display.stereoChecked = stereo;
        e.display.showLines = lines;
        screen.setBackColor(stereo ? kBlack : kWhite);
        e.drawLines();
        QTemporaryDir dir;
        const FrameSource map{e.doc, e.view, e.display, e.underlay};
        const QString path = dir.filePath("view.png");
        PictureOptions options;
        options.area = PictureArea::CurrentView;
        ASSERT_EQ(writePicture(path, PictureFormat::Png, pictureFrame(options, map), map, screen.backColor()), "");
        EXPECT_EQ(QImage(path).convertToFormat(QImage::Format_RGB32), screen.image()) << "stereo " << stereo;
    }
}

TEST(Picture, AScreenOfMoreDevicePixelsChangesNoExport)
{
    // The view of a screen at 200 %: the picture has the size of the view in
    // the layout's pixels, and is that of a plain screen.
    QImageSurface dense(300 * 15, 200 * 15, 2), plain(300 * 15, 200 * 15);
    EditorOn w(dense);
    Editor& e = w.editor;
    addTestLine(e, -20, -10, 5, 40, 30, 80, kBlue);
    addTestLabel(e, 15, 5, 20, kRed, "Bank");
    setCurrentScale(e.view, e.doc, 40);
    e.view.offsetX = 1200;
    e.view.offsetY = 900;
    e.drawLines();
    ASSERT_EQ(dense.image().size(), QSize(600, 400));
    const FrameSource map = e.frameSource();
    plain.setPenWidth(2);
    drawFrame(plain, map);
    QTemporaryDir dir;
    const QString path = dir.filePath("view.png");
    PictureOptions options;
    options.area = PictureArea::CurrentView;
    ASSERT_EQ(writePicture(path, PictureFormat::Png, pictureFrame(options, map), map, dense.backColor()), "");
    EXPECT_EQ(QImage(path).convertToFormat(QImage::Format_RGB32), plain.image());
}

} // namespace
