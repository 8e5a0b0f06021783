#include "shell/widgets/mainwindow.h"
#include "editor/mapevents.h"
#include "shell/widgets/controls.h"
#include "shell/widgets/maparea.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QProgressDialog>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <QWheelEvent>

#include "document/mapwriter.h"
#include "platform/settingsstore.h"
#include "platform/twips.h"
#include "tests/support/files.h"
#include "tests/support/qtprinters.h"
#include "view/zoom.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace plotwell;
using plotwell::test::fileBytes;
using plotwell::test::writeBytes;

namespace {

// Where a frame of the panels lies in the window's client area.
QRect inClient(const QWidget* frame, const QWidget* client)
{
    return QRect(frame->mapTo(client, QPoint(0, 0)), frame->size());
}

// The screen of the given device pixel ratio, among those the tests run with.
QScreen* screenOfRatio(double ratio)
{
    for (QScreen* screen : QGuiApplication::screens())
        if (screen->devicePixelRatio() == ratio)
            return screen;
    return nullptr;
}

} // namespace

TEST(MainWindow, PanelsFitAtTheDefaultSizeAndFollowAResize)
{
    MainWindow window;
    window.show();
    const Controls& c = window.controls();
    QWidget* client = window.centralWidget();
    // Nothing of the map or the panels is cut off at the default size.
    EXPECT_LE(inClient(c.frmStuff, client).right(), client->width());
    EXPECT_LE(inClient(c.frmStuff, client).bottom(), client->height());
    EXPECT_LE(c.map->geometry().bottom(), client->height());
    EXPECT_LT(c.map->geometry().right(), inClient(c.frmStuff, client).x());

    window.resize(1200, 800);
    QCoreApplication::processEvents();
    const QSizeF outer = window.outerSizeTwips();
    EXPECT_EQ(inClient(c.frmStuff, client).x(), qRound((outer.width() - 4095) / 15));
    EXPECT_EQ(inClient(c.frmTools, client).x(), inClient(c.frmStuff, client).x());
    EXPECT_EQ(c.map->width(), qRound((outer.width() - 4095 - 120) / 15));
    EXPECT_EQ(c.map->height(), qRound((outer.height() - 930) / 15));
    EXPECT_EQ(window.mapImage().deviceIndependentSize().toSize(), c.map->size());

    // Far too narrow for the panels: the window keeps running.
    window.resize(120, 60);
    QCoreApplication::processEvents();
    window.frameTick();
    EXPECT_LT(inClient(c.frmStuff, client).x(), 0);
}

TEST(MainWindow, PanelsTooTallForTheWindowScrollWithEveryControlInItsPlace)
{
    MainWindow window;
    window.show();
    const Controls& c = window.controls();
    QWidget* client = window.centralWidget();
    window.resize(900, 300);
    QCoreApplication::processEvents();
    QScrollBar* bar = c.panels->verticalScrollBar();
    ASSERT_TRUE(bar->isVisible());
    EXPECT_LE(c.panels->geometry().right(), client->width() - 1);
    EXPECT_EQ(c.lblLoc->geometry(), twipRect(180, 5040, 3495, 255)) << "placed in its frame as laid out";
    EXPECT_EQ(inClient(c.frmTools, client).x(), inClient(c.frmStuff, client).x());
    EXPECT_LT(c.map->geometry().right(), inClient(c.frmStuff, client).x());
    bar->setValue(bar->maximum());
    EXPECT_EQ(inClient(c.frmStuff, client).bottom(), c.panels->viewport()->height() - 1) << "scrolled to its end";

    window.resize(900, 700);
    QCoreApplication::processEvents();
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(inClient(c.frmStuff, client).x(), qRound((window.outerSizeTwips().width() - 4095) / 15));
}

TEST(MainWindow, OnAScreenOfAnotherRatioTheWindowFitsAndTheMapIsDrawnAtItsPixels)
{
    QScreen* plain = screenOfRatio(1);
    QScreen* dense = screenOfRatio(2);
    ASSERT_TRUE(plain && dense) << "the tests run on two screens (tests/data/screens.json)";
    MainWindow window;
    window.move(dense->availableGeometry().topLeft());
    window.show();
    QCoreApplication::processEvents();
    window.frameTick();
    const Controls& c = window.controls();
    // The screen has less room than the layout asks for: the window opens
    // within it, and the panels scroll.
    EXPECT_TRUE(dense->availableGeometry().contains(window.frameGeometry()))
        << testing::PrintToString(window.frameGeometry());
    EXPECT_TRUE(c.panels->verticalScrollBar()->isVisible());
    EXPECT_EQ(window.mapImage().devicePixelRatio(), 2);
    EXPECT_EQ(window.mapImage().size(), c.map->size() * 2);
    // What the map shows is the image, pixel for pixel.
    const QImage shown = c.map->grab().toImage().convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(shown.size(), window.mapImage().size());
    EXPECT_TRUE(shown == window.mapImage()) << "shown one device pixel to one";

    // Moved to the plain screen, the next frame is drawn at its pixels.
    window.move(plain->availableGeometry().topLeft());
    QCoreApplication::processEvents();
    window.frameTick();
    EXPECT_EQ(window.mapImage().devicePixelRatio(), 1);
    EXPECT_EQ(window.mapImage().size(), c.map->size());
}

TEST(MainWindow, CloseWaitsForTwoTicks)
{
    MainWindow window;
    bool ended = false;
    window.ended = [&ended] { ended = true; };
    window.show();
    EXPECT_FALSE(window.close()); // refused: the shutdown timer starts instead
    EXPECT_TRUE(window.isVisible());
    window.endTimerTick();
    EXPECT_FALSE(ended);
    window.endTimerTick();
    EXPECT_TRUE(ended);
}

TEST(MainWindow, DroppedFileLoadsIntoTheBaseLayerAndShows)
{
    QTemporaryDir dir;
    const QString path = writeBytes(dir.filePath(QStringLiteral("zone.txt")),
                                    "L -300, -200, 0,  300, 200, 0,  255, 0, 0\n"
                                    "P 200, -150, 0,  0, 0, 255,  2,  Camp Fire\n");

    MainWindow window;
    window.show();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    // A drop reaches the widget the drag entered.
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.controls().map, &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(window.controls().map, &drop);

    EXPECT_EQ(window.editor().doc.lineCount(), 1u);
    EXPECT_EQ(window.editor().doc.labelCount(), 1u);
    EXPECT_EQ(window.controls().chkLayer[0]->text(), QStringLiteral("zone.txt"));
    // A dropped file's address becomes a path of the system's own form, and its
    // folder is remembered with the separator at its end (a backslash on Windows).
    EXPECT_EQ(window.editor().doc.homes[0].layerFile, QDir::toNativeSeparators(path));
    EXPECT_EQ(QtSettingsStore().get(QStringLiteral("settings"), QStringLiteral("previousMapFolder"), {}),
              QDir::toNativeSeparators(dir.path()) + QDir::separator());
    // The base layer is fitted: the scale caption no longer reads 1.
    EXPECT_NE(window.controls().lblScale->text(), QStringLiteral("Scale: 1"));

    window.frameTick();
    const QImage frame = window.mapImage();
    // The red line crosses the centre of the map.
    const QPoint centre(frame.width() / 2, frame.height() / 2);
    bool red = false;
    for (int dy = -3; dy <= 3; ++dy)
        for (int dx = -3; dx <= 3; ++dx)
            red = red || frame.pixelColor(centre + QPoint(dx, dy)) == QColor(255, 0, 0);
    EXPECT_TRUE(red);
}

TEST(MainWindow, NoFrameIsDrawnWhileAHandlerLetsEventsRun)
{
    MainWindow window;
    window.show();
    window.frameTick(); // the first frame; the flash steps from the next on
    const int level = window.editor().display.flashLevel;
    // The fit lets pending events run once, among them this tick of the frame clock.
    QTimer::singleShot(0, &window, [&window] { window.frameTick(); });
    QTest::mousePress(window.controls().imgAutoSize, Qt::LeftButton, {}, {5, 5});
    EXPECT_EQ(window.editor().display.flashLevel, level);
    window.frameTick();
    EXPECT_NE(window.editor().display.flashLevel, level);
}

TEST(MainWindow, NoFrameIsDrawnWhileADialogIsOpen)
{
    MainWindow window;
    window.show();
    window.frameTick();
    const int level = window.editor().display.flashLevel;
    QMessageBox box(&window);
    int levelWhileOpen = -1;
    QTimer::singleShot(0, &window, [&] {
        window.frameTick();
        levelWhileOpen = window.editor().display.flashLevel;
        box.done(0);
    });
    box.exec();
    EXPECT_EQ(levelWhileOpen, level);
}

TEST(MainWindow, TheMapForwardsKeysAndMouseToTheEditor)
{
    MainWindow window;
    window.show();
    QWidget* map = window.controls().map;
    QTest::keyClick(map, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(window.editor().view.offsetX, 500.0f);
    QTest::keyClick(map, Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_FLOAT_EQ(window.editor().view.currentScale, 1.01f);

    // The Pan icon is raised once chosen; a drag then moves the view, in twips.
    QTest::mouseClick(window.controls().imgTool[1], Qt::LeftButton, {}, {3, 3});
    EXPECT_EQ(window.controls().imgTool[1]->frameShadow(), QFrame::Raised);
    EXPECT_EQ(window.controls().imgTool[0]->frameShadow(), QFrame::Plain);
    EXPECT_EQ(map->cursor().shape(), Qt::SizeAllCursor);
    QTest::mousePress(map, Qt::LeftButton, {}, {10, 10});
    QMouseEvent move(QEvent::MouseMove, QPointF(30, 14), QPointF(30, 14), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(map, &move);
    EXPECT_EQ(window.editor().view.offsetX, 500.0f + 20 * 15);
    EXPECT_EQ(window.editor().view.offsetY, 4.0f * 15);
}

TEST(MainWindow, TheWheelZoomsOncePerNotchUntilShutdownLetsItGo)
{
    MainWindow window;
    window.ended = [] {};
    window.show();
    QWidget* map = window.controls().map;
    // A wheel event the map does not take goes on to its parents as copies
    // with the same time, as the window system's events do.
    const auto turn = [&](int delta, quint64 time) {
        for (QWidget* w = map; w; w = w->parentWidget()) {
            QWheelEvent wheel(QPointF(40, 30), map->mapToGlobal(QPointF(40, 30)), QPoint(), QPoint(0, delta),
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            wheel.setTimestamp(time);
            QCoreApplication::sendEvent(w, &wheel);
        }
    };
    QMouseEvent move(QEvent::MouseMove, QPointF(40, 30), QPointF(40, 30), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(map, &move);
    turn(120, 1);
    EXPECT_FLOAT_EQ(window.editor().view.currentScale, 1.5f);
    turn(60, 2); // half a notch from a touchpad
    EXPECT_FLOAT_EQ(window.editor().view.currentScale, 1.5f);
    turn(60, 3);
    EXPECT_FLOAT_EQ(window.editor().view.currentScale, 2.0f);
    EXPECT_EQ(window.controls().lblScale->text(), QStringLiteral("Scale: 2"));

    window.close();
    window.endTimerTick();
    turn(120, 4);
    EXPECT_FLOAT_EQ(window.editor().view.currentScale, 2.0f);
}

namespace {

QAction* fileMenuEntry(MainWindow& window, const QString& text)
{
    for (QAction* entry : window.menuBar()->actions().front()->menu()->actions())
        if (entry->text() == text)
            return entry;
    return nullptr;
}

} // namespace

TEST(MainWindow, TheEditMenuAndItsKeysUndoAndRedo)
{
    MainWindow window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QStringList menus;
    for (QAction* menu : window.menuBar()->actions())
        menus << menu->text();
    EXPECT_EQ(menus, (QStringList{"File", "Edit", "Tools", "Help"}));
    const Controls& c = window.controls();
    EXPECT_FALSE(c.mnuUndo->isEnabled() || c.mnuRedo->isEnabled());

    QTest::mouseClick(c.imgTool[3], Qt::LeftButton, {}, {3, 3}); // the Line tool: two clicks make a line
    QTest::mousePress(c.map, Qt::LeftButton, {}, {10, 10});
    QTest::mousePress(c.map, Qt::LeftButton, {}, {50, 40});
    EXPECT_TRUE(c.mnuUndo->isEnabled());
    EXPECT_EQ(c.mnuUndo->text(), QStringLiteral("Undo Line"));
    const auto keyOnMap = [&](Qt::KeyboardModifiers modifiers, Qt::Key key, std::size_t lines) {
        QTest::keyClick(c.map, key, modifiers);
        EXPECT_EQ(window.editor().doc.lineCount(), lines) << QKeySequence(modifiers | key).toString().toStdString();
    };
    keyOnMap(Qt::ControlModifier, Qt::Key_Z, 0);
    EXPECT_FALSE(c.mnuUndo->isEnabled());
    EXPECT_EQ(c.mnuUndo->text(), QStringLiteral("Undo"));
    EXPECT_EQ(c.mnuRedo->text(), QStringLiteral("Redo Line"));
    keyOnMap(Qt::ControlModifier, Qt::Key_Y, 1);
    keyOnMap(Qt::ControlModifier, Qt::Key_Z, 0);
    keyOnMap(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z, 1);
    EXPECT_FALSE(c.mnuRedo->isEnabled());
    QTest::keyPress(c.map, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(window.editor().keys.zKey) << "Ctrl+Z is not Z held for the wheel";
}

// Edits not saved when the program ends are offered in the next run. A
// command from the menu that changes the map shows it in the next frame,
// even while a tool holds the frame it drew on (the Line tool's band).
TEST(MainWindow, EditsNotSavedWhenTheProgramEndsAreRecoveredAndShownInTheNextRun)
{
    QTemporaryDir dir;
    const QByteArray read = "L -300,-200,0,300,200,0,255,0,0\r\n";
    const QString path = writeBytes(dir.filePath(QStringLiteral("zone.txt")), read);
    std::string edited;
    {
        MainWindow window;
        window.ended = [] {};
        window.openFiles({path});
        Editor& e = window.editor();
        e.palette.activeColor = {0, 0, 255};
        toolIconClicked(e, ToolId::Line);
        mapMouseDown(e, kLeftButton, {300, 300});
        mapMouseDown(e, kLeftButton, {3000, 3000});
        edited = formatLayer(e.doc, 0);
        // Closed at once, before a copy was due: two ticks and no question.
        window.close();
        window.endTimerTick();
        window.endTimerTick();
        QtRecoveryPlace place;
        EXPECT_FALSE(RecoveryKeeper(place).canRecover()) << "a program still running keeps its copies";
    }
    MainWindow next;
    next.show();
    next.openFiles({path});
    const Controls& c = next.controls();
    QTest::mouseClick(c.imgTool[3], Qt::LeftButton, {}, {3, 3});
    QTest::mousePress(c.map, Qt::LeftButton, {}, {100, 10});
    QMouseEvent move(QEvent::MouseMove, QPointF(120, 30), QPointF(120, 30), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(c.map, &move);
    next.frameTick();
    ASSERT_TRUE(next.editor().tools.state.holdDrawing) << "the band is held";
    QAction* recover = fileMenuEntry(next, QStringLiteral("Recover Unsaved Layers"));
    ASSERT_TRUE(recover->isEnabled());
    recover->trigger();
    EXPECT_FALSE(recover->isEnabled());
    next.frameTick();
    const QImage shown = next.mapImage().copy();
    EXPECT_TRUE(shown.pixelColor(25, 25) == QColor(0, 0, 255) || shown.pixelColor(25, 26) == QColor(0, 0, 255))
        << "the recovered line is drawn";
    // What a frame drawn afresh shows.
    next.editor().tools.state.holdDrawing = false;
    next.editor().frameDirty = true;
    next.frameTick();
    EXPECT_EQ(shown, next.mapImage());

    fileMenuEntry(next, QStringLiteral("Save all layers"))->trigger();
    EXPECT_EQ(fileBytes(path).toStdString(), edited);
    c.mnuUndo->trigger();
    EXPECT_EQ(formatLayer(next.editor().doc, 0), read.toStdString()) << "recovering is a step";
}

TEST(MainWindow, TheProgramEndsOnceTheHandlerThatLetsEventsRunHasReturned)
{
    QTemporaryDir dir;
    const QString path = writeBytes(dir.filePath(QStringLiteral("zone.txt")), "L 1,2,3,4,5,6,7,8,9\r\n");
    std::string edited;
    {
        MainWindow window;
        int ends = 0;
        window.ended = [&ends] { ++ends; };
        window.openFiles({path});
        Editor& e = window.editor();
        toolIconClicked(e, ToolId::Line);
        window.close();
        // The shutdown timer ticks while a handler lets events run, as a long
        // load does, and the handler's edit comes after the ticks.
        window.controls().map->run([&] {
            window.endTimerTick();
            window.endTimerTick();
            mapMouseDown(e, kLeftButton, {10, 10});
            mapMouseDown(e, kLeftButton, {50, 40});
            EXPECT_EQ(ends, 0);
        });
        EXPECT_EQ(ends, 1);
        edited = formatLayer(e.doc, 0);
    }
    MainWindow next;
    fileMenuEntry(next, QStringLiteral("Recover Unsaved Layers"))->trigger();
    EXPECT_EQ(formatLayer(next.editor().doc, 0), edited);
    // Saved and ended as the window ends, the run leaves no copies behind.
    fileMenuEntry(next, QStringLiteral("Save all layers"))->trigger();
    next.ended = [] {};
    next.endTimerTick();
    next.endTimerTick();
}

TEST(QtProgress, AppearsOnlyForLongTasksAndReportsACancel)
{
    QWidget parent;
    QtProgress progress(&parent);
    const auto dialog = [] {
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* d = qobject_cast<QProgressDialog*>(w))
                return d;
        return static_cast<QProgressDialog*>(nullptr);
    };
    progress.begin(QStringLiteral("Loading zone.txt"));
    ASSERT_TRUE(dialog());
    EXPECT_FALSE(dialog()->isVisible()) << "nothing shows at once";
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < 800) {
        ASSERT_TRUE(progress.advance(timer.elapsed(), 2000));
        QThread::msleep(20);
    }
    EXPECT_TRUE(dialog()->isVisible()) << "a task that lasts shows its progress";
    EXPECT_EQ(dialog()->labelText(), QStringLiteral("Loading zone.txt"));
    dialog()->cancel();
    EXPECT_FALSE(progress.advance(900, 2000));
    progress.end();
    EXPECT_FALSE(dialog());
}
