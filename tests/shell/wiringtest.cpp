#include "editor/gamelog.h"
#include "editor/underlaycommands.h"
#include "shell/widgets/controls.h"
#include "shell/widgets/mainwindow.h"
#include "shell/widgets/maparea.h"

#include "tests/support/files.h"
#include "tests/support/qtprinters.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace plotwell;
using plotwell::test::writeBytes;

namespace {

void mouse(QWidget* target, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held, QPointF at = {3, 3})
{
    QMouseEvent event(type, at, target->mapToGlobal(at), button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(target, &event);
}

QAction* menuEntry(MainWindow& window, const QString& path)
{
    const QStringList names = path.split(QLatin1Char('>'));
    QList<QAction*> entries = window.menuBar()->actions();
    QAction* found = nullptr;
    for (const QString& name : names) {
        found = nullptr;
        for (QAction* entry : entries)
            if (entry->text() == name || entry->text().startsWith(name + QLatin1Char(' ')))
                found = entry;
        if (!found)
            return nullptr;
        if (found->menu())
            entries = found->menu()->actions();
    }
    return found;
}

// The dialog a modal loop shows, as its kind and its leading text; it is cancelled.
QString dismissModal()
{
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal)
        return {};
    QString seen = QString::fromLatin1(modal->metaObject()->className());
    if (auto* files = qobject_cast<QFileDialog*>(modal))
        seen += QLatin1Char(' ') + files->nameFilters().join(QLatin1Char(';')).left(24);
    else if (auto* input = qobject_cast<QInputDialog*>(modal))
        seen += QLatin1Char(' ') + input->labelText();
    else if (auto* box = qobject_cast<QMessageBox*>(modal))
        seen += QLatin1Char(' ') + box->text().left(24);
    else
        seen += QLatin1Char(' ') + modal->windowTitle();
    static_cast<QDialog*>(modal)->reject();
    return seen;
}

// What the menu's entries change: the layer of each line, the labels, the
// underlay, the files on disk, the shutdown and following the game's log.
QString stateOf(MainWindow& window, const QStringList& files)
{
    const Editor& e = window.editor();
    QString s;
    for (const MapLine& line : e.doc.lines())
        s += QString::number(line.layer);
    s += QStringLiteral(" labels:%1").arg(e.doc.labelCount());
    if (!e.underlay.picture.isNull())
        s += QStringLiteral(" underlay");
    s += QStringLiteral(" files:%1").arg(std::count_if(files.begin(), files.end(), [](const QString& f) {
        return QFile::exists(f);
    }));
    if (e.shell.endTimerEnabled)
        s += QStringLiteral(" ending");
    if (e.follower.following())
        s += QStringLiteral(" following");
    if (e.follower.recordPath)
        s += QStringLiteral(" recording");
    return s;
}

} // namespace

TEST(Wiring, EveryMenuEntryReachesItsHandler)
{
    QTemporaryDir dir;
    // Two crossing lines and a label in the base layer, a line in each other layer.
    const QStringList files{dir.filePath(QStringLiteral("a.txt")), dir.filePath(QStringLiteral("b.txt")),
                            dir.filePath(QStringLiteral("c.txt")), dir.filePath(QStringLiteral("d.txt"))};
    const QString picture = dir.filePath(QStringLiteral("under.png"));
    QImage(8, 8, QImage::Format_RGB32).save(picture);
    const QString log = writeBytes(dir.filePath(QStringLiteral("eqlog_a_b.txt")), "");

    const struct {
        const char* entry;
        const char* dialog;
        const char* state;
    } cases[] = {
        {"File>Open EQ Map File>As Base Layer", "QFileDialog Text files (*.txt);All F",
         "123 labels:0 underlay files:0 following"},
        {"File>Open EQ Map File>As Layer 2", "QFileDialog Text files (*.txt);All F",
         "0013 labels:1 underlay files:0 following"},
        {"File>Open Underlay Image", "QFileDialog JPEG Images (*.jpg);GIF ",
         "00123 labels:1 underlay files:0 following"},
        {"File>Close all layers", "", " labels:0 underlay files:0 following"},
        {"File>Close Underlay Image", "", "00123 labels:1 underlay files:0 following"}, // the picture stays
        {"File>Save all layers", "", "00123 labels:1 underlay files:4 following"},
        {"File>Export Picture...", "QDialog Export Picture", "00123 labels:1 underlay files:0 following"},
        {"File>Exit", "", "00123 labels:1 underlay files:0 ending following"},
        {"Edit>Undo", "", " labels:0 underlay files:0 following"}, // the drop was one step
        {"Edit>Move Selection...",
         "QInputDialog Move the selection by what distance? (y, x or y, x, z, as a /loc writes places)",
         "00123 labels:1 underlay files:0 following"},
        {"Edit>Label Properties...", "QDialog Label Properties", "00123 labels:1 underlay files:0 following"},
        {"Tools>Plot Intersection", "", "0012333 labels:1 underlay files:0 following"},
        {"Tools>Find Label by Keyword", "QInputDialog Enter keyword to search for",
         "00123 labels:1 underlay files:0 following"},
        {"Tools>Follow Game Log...", "", "00123 labels:1 underlay files:0"},
        {"Tools>Record Path", "", "00123 labels:1 underlay files:0 following recording"},
        {"Tools>Stop Following", "", "00123 labels:1 underlay files:0"},
        {"Help>About", "QMessageBox Plotwell - Offline Everq", "00123 labels:1 underlay files:0 following"},
    };
    for (const auto& c : cases) {
        writeBytes(files[0], "L 0,0,0,100,100,0,0,0,0\r\nL 0,100,0,100,0,0,0,0,0\r\nP 5,5,0,0,0,0,1,Gate\r\n");
        for (int n = 1; n < 4; ++n)
            writeBytes(files[n], "L " + QByteArray::number(n) + ",0,0,9,9,0,0,0,0\r\n");
        MainWindow window;
        window.ended = [] {};
        window.openFiles(files);
        for (const QString& f : files)
            QFile::remove(f); // to be written again by Save all layers
        Editor& e = window.editor();
        e.doc.setLineSelected(0, true);
        e.doc.setLineSelected(1, true);
        e.doc.setLabelSelected(0, true);
        ASSERT_TRUE(loadUnderlay(e, picture));
        followGameLog(e, log);
        window.syncControls();
        QString shown;
        QTimer::singleShot(0, &window, [&shown] { shown = dismissModal(); });
        QAction* entry = menuEntry(window, QString::fromLatin1(c.entry));
        ASSERT_TRUE(entry) << c.entry;
        entry->trigger();
        QCoreApplication::processEvents();
        EXPECT_EQ(shown, QString::fromLatin1(c.dialog)) << c.entry;
        EXPECT_EQ(stateOf(window, files), QString::fromLatin1(c.state)) << c.entry;
    }
}

// The Move tool's icon, a double click on a label with it, and the entries
// that switch snapping and keeping the player in view, each shown ticked as
// the editor has it.
TEST(Wiring, TheMoveToolAndTheEditingSwitches)
{
    MainWindow window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    Editor& e = window.editor();
    const Controls& c = window.controls();
    EXPECT_EQ(c.imgTool[int(ToolId::Move)]->toolTip(), QStringLiteral("Move tool (drag the selected records)"));
    QTest::mouseClick(c.imgTool[int(ToolId::Move)], Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(e.tools.current(), ToolId::Move);

    for (const auto& [path, on] : {std::pair{"Edit>Snap to Line Ends", &e.tools.state.snapToEnds},
                                   std::pair{"Tools>Keep Player in View", &e.follower.keepInView}}) {
        QAction* entry = menuEntry(window, QString::fromLatin1(path));
        ASSERT_TRUE(entry && entry->isCheckable()) << path;
        const bool first = *on;
        for (int i = 0; i < 2; ++i) {
            entry->trigger();
            window.syncControls();
            EXPECT_EQ(*on, i == 0 ? !first : first) << path;
            EXPECT_EQ(entry->isChecked(), *on) << path;
        }
    }

    // A label under the point (40, 30) pixels of the map.
    const MapPoint at = toWorld(e.view, 40 * 15, 30 * 15);
    const std::string text = std::to_string(at.x) + "," + std::to_string(at.y) + ",0,0,0,0,1,Gate";
    std::int16_t layer = 0;
    ASSERT_FALSE(e.doc.addLabel(text, layer, e.view.currentScale));
    window.syncControls();
    EXPECT_FALSE(menuEntry(window, QStringLiteral("Edit>Label Properties..."))->isEnabled());
    e.doc.setLabelSelected(0, true);
    window.syncControls();
    EXPECT_TRUE(menuEntry(window, QStringLiteral("Edit>Label Properties..."))->isEnabled());
    QString shown;
    QTimer::singleShot(0, &window, [&shown] { shown = dismissModal(); });
    // As the system sends a double click: a click, then a second press as a
    // double click, then its release.
    QTest::mouseClick(c.map, Qt::LeftButton, {}, {40, 30});
    mouse(c.map, QEvent::MouseButtonDblClick, Qt::LeftButton, Qt::LeftButton, {40, 30});
    mouse(c.map, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, {40, 30});
    QCoreApplication::processEvents();
    EXPECT_EQ(shown, QStringLiteral("QDialog Label Properties"));
}

TEST(Wiring, TheCaptionBoxCommitsOnEitherEnterCancelsOnEscapeAndHandsTheKeysBack)
{
    MainWindow window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const Controls& c = window.controls();
    QTest::mouseClick(c.imgTool[int(ToolId::Label)], Qt::LeftButton, {}, {3, 3});
    auto* caption = c.map->findChild<QLineEdit*>();
    ASSERT_TRUE(caption);
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        std::size_t labels;
    } cases[] = {{Qt::Key_Return, Qt::NoModifier, 1},
                 {Qt::Key_Enter, Qt::KeypadModifier, 2},
                 {Qt::Key_Escape, Qt::NoModifier, 2}};
    for (const auto& k : cases) {
        QTest::mouseClick(c.map, Qt::LeftButton, {}, {40, 30});
        window.syncControls();
        ASSERT_TRUE(caption->isVisible());
        EXPECT_EQ(caption->selectedText(), QStringLiteral("(New Label)"))
            << "each opening starts from the new-label text";
        EXPECT_EQ(QApplication::focusWidget(), caption);
        QTest::keyClicks(caption, QStringLiteral("Gate"));
        QTest::keyClick(caption, k.key, k.modifiers);
        window.syncControls();
        EXPECT_FALSE(caption->isVisible()) << k.key;
        EXPECT_EQ(QApplication::focusWidget(), c.map) << k.key;
        ASSERT_EQ(window.editor().doc.labelCount(), k.labels) << k.key;
        EXPECT_EQ(window.editor().doc.labels().back().text, "Gate") << k.key;
    }
}

TEST(Wiring, ControlsTakeTheirButtonsOnly)
{
    MainWindow window;
    window.show();
    const Controls& c = window.controls();
    Editor& e = window.editor();
    // Tool icons and layer markers take a left click: pressed and let go over them.
    for (QWidget* target : {static_cast<QWidget*>(c.imgTool[2]), static_cast<QWidget*>(c.lbActiveLayer[3])}) {
        for (const Qt::MouseButton other : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton})
            QTest::mouseClick(target, other, {}, {3, 3});
        mouse(target, QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton);
        mouse(target, QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, {-40, 3});
    }
    EXPECT_EQ(e.tools.current(), ToolId::Pointer);
    EXPECT_EQ(e.doc.activeLayer, 0);
    QTest::mouseClick(c.imgTool[2], Qt::LeftButton, {}, {3, 3});
    QTest::mouseClick(c.lbActiveLayer[3], Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(e.tools.current(), ToolId::Select);
    EXPECT_EQ(e.doc.activeLayer, 3);

    e.palette.activeColor = {10, 20, 30};
    e.palette.presetColors[4] = {1, 2, 3};
    // Back and forward are no buttons of a swatch; right and middle store the active colour.
    QTest::mouseClick(c.lblColor[5], Qt::BackButton, {}, {3, 3});
    QTest::mouseClick(c.lblColor[6], Qt::ForwardButton, {}, {3, 3});
    QTest::mouseClick(c.lblColor[7], Qt::MiddleButton, {}, {3, 3});
    QTest::mouseClick(c.lblColor[8], Qt::RightButton, {}, {3, 3});
    const std::vector<ColorRGB> swatches(e.palette.swatchColors.begin() + 5, e.palette.swatchColors.begin() + 9);
    EXPECT_EQ(swatches, (std::vector<ColorRGB>{{}, {}, {10, 20, 30}, {10, 20, 30}}));
    QTest::mouseClick(c.lblColor[4], Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(e.palette.activeColor, (ColorRGB{1, 2, 3}));

    // A strip follows a drag with the left button only; passing over it with
    // no button held gives the map the keys.
    QWidget* green = c.sldColor[1];
    c.chkLines->setFocus();
    mouse(green, QEvent::MouseMove, Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(window.focusWidget(), c.map);
    mouse(green, QEvent::MouseMove, Qt::NoButton, Qt::RightButton, {green->width() * 2.0, 3});
    EXPECT_EQ(e.palette.activeColor.g, 2);
    mouse(green, QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, {green->width() * 2.0, 3});
    EXPECT_EQ(e.palette.activeColor.g, 255);
}

TEST(Wiring, StereoSlidersBrightnessAndTheAspectBoxReachTheDrawing)
{
    QTemporaryDir dir;
    const QString map = writeBytes(dir.filePath(QStringLiteral("m.txt")),
                                   "L -300,-200,50,300,200,-80,255,0,0\r\nL -300,200,90,300,-200,0,0,0,255\r\n");
    const QString picture = dir.filePath(QStringLiteral("wide.png"));
    QImage wide(400, 100, QImage::Format_RGB32);
    wide.fill(QColor(0, 160, 0));
    wide.save(picture);

    MainWindow window;
    window.show();
    window.openFiles({map});
    const Controls& c = window.controls();
    QTest::mouseClick(c.chkStereo, Qt::LeftButton, {}, {3, 3});
    ASSERT_TRUE(c.chkStereo->isChecked());
    const auto frame = [&] {
        window.frameTick();
        return window.mapImage().copy();
    };
    QImage before = frame();
    for (QSlider* slider : {c.sldStereo, c.sldStereoZ, c.sldBrightness}) {
        slider->setValue(slider->value() + 20);
        const QImage after = frame();
        EXPECT_NE(after, before) << slider->toolTip().toStdString();
        before = after;
    }
    ASSERT_TRUE(loadUnderlay(window.editor(), picture));
    QTest::mouseClick(c.cmdBkg[0], Qt::LeftButton, {}, {3, 3}); // underlay on
    before = frame();
    QTest::mouseClick(c.chkAspect, Qt::LeftButton, {}, {3, 3});
    EXPECT_FALSE(c.chkAspect->isChecked());
    EXPECT_NE(frame(), before) << "the wide picture is stretched over the whole map";
}
