#include "shell/widgets/mainwindow.h"

#include "editor/displayhandlers.h"
#include "editor/editmenu.h"
#include "editor/layercommands.h"
#include "editor/maploading.h"
#include "editor/shutdown.h"
#include "editor/startup.h"
#include "editor/viewcommands.h"
#include "editor/windowlayout.h"
#include "platform/twips.h"
#include "shell/widgets/controls.h"
#include "shell/widgets/maparea.h"
#include "view/zoom.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QMenuBar>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QScrollArea>
#include <QSlider>
#include <QWheelEvent>

#include <cstdlib>
#include <tuple>

// The icons are compiled into this library; a static library's resources
// must be registered by name, outside any namespace.
static void registerResources()
{
    Q_INIT_RESOURCE(resources);
}

namespace plotwell {
namespace {

// The client area the window was designed with, in twips.
constexpr double kClientWidth = 11325;
constexpr double kClientHeight = 7995;

void setTextIfChanged(QLabel* label, const QString& text)
{
    if (label->text() != text)
        label->setText(text);
}

void setCheckedQuietly(QCheckBox* box, bool checked)
{
    if (box->isChecked() == checked)
        return;
    const QSignalBlocker block(box);
    box->setChecked(checked);
}

} // namespace

MainWindow::MainWindow()
    : m_editor(Services{m_surface, m_fileDialog, m_dialogs, m_settings, m_events, m_clipboard, m_launcher, m_progress,
                        m_pictureDialog})
{
    registerResources();
    m_editor.view.decimalSeparator = systemDecimalSeparator();
    // The map is drawn at the device pixels of the screen the window opens on.
    m_surface.setPixelRatio(devicePixelRatioF());
    m_surface.resize(m_editor.view.mapWidth, m_editor.view.mapHeight);

    useLayoutFont();
    buildWindow();

    startUp(m_editor);
    setWindowTitle(windowCaption());
    resize(px(kClientWidth), px(kClientHeight) + menuBar()->sizeHint().height());
    applyLayout();
    syncControls();
    finishStartUp(m_editor);

    startClocks();
}

void MainWindow::useLayoutFont()
{
    // The controls were laid out for a narrow 8-point face: a sans-serif of
    // Arial's widths keeps every caption whole; else the platform's own.
    QFont font = this->font();
    font.setFamilies(
        {QStringLiteral("Arial"), QStringLiteral("Liberation Sans"), QStringLiteral("Helvetica"), font.family()});
    font.setPointSizeF(8.25);
    setFont(font);
}

// The map, its handlers' wiring, the panels, the menus and the frames.
void MainWindow::buildWindow()
{
    auto* client = new QWidget(this);
    setCentralWidget(client);
    m_controls.map = new MapArea(m_editor, m_surface.image(), client);
    m_controls.map->run = [this](const std::function<void()>& handler) { handle(handler); };
    m_editor.focusMap = [this] { m_controls.map->setFocus(Qt::OtherFocusReason); };
    // Like the frames, the core's own handlers wait for the one running and
    // for an open dialog; they find their work again on their next call.
    // They draw what they change themselves: a poll of the game's log that
    // finds nothing new costs no frame.
    m_editor.runEventHandler = [this](const std::function<bool()>& handler) {
        if (m_handlersRunning > 0 || QApplication::activeModalWidget())
            return;
        ++m_handlersRunning;
        const bool changed = handler();
        --m_handlersRunning;
        if (changed)
            syncControls();
    };
    // Only what changed is shown again: a flashing selection repaints its own records.
    m_surface.onRefresh = [this](const QRegion& changed) { m_controls.map->showChanged(changed); };
    m_panelContent = buildPanels(client);
    buildMenus();
    buildToolFrame();
    buildOptionsFrame();
    // The frames are opaque, so that in a narrow window the map does not
    // show through them, and their caption sits on their top border line.
    for (QGroupBox* frame : {m_controls.frmTools, m_controls.frmStuff}) {
        frame->setStyleSheet(
            QStringLiteral("QGroupBox { border: 1px solid palette(mid); margin-top: 6px; background: palette(window); }"
                           "QGroupBox::title { subcontrol-origin: margin; left: 6px; padding: 0 2px; }"
                           "QCheckBox { spacing: 3px; }"));
    }
    m_controls.panels->raise();
}

// The render loop's clock, the shutdown's and the recovery copies'.
void MainWindow::startClocks()
{
    // The render loop: one frame per tick of a clock paced like the display;
    // events run between ticks, so every handler runs between two frames.
    m_frameClock.setTimerType(Qt::PreciseTimer);
    m_frameClock.setInterval(16);
    connect(&m_frameClock, &QTimer::timeout, this, &MainWindow::frameTick);
    m_frameClock.start();

    hookMouseWheel();
    m_endTimer.setInterval(1000);
    connect(&m_endTimer, &QTimer::timeout, this, &MainWindow::endTimerTick);

    // Unsaved layers are copied between handlers, never in the middle of one.
    m_recoveryClock.setInterval(500);
    connect(&m_recoveryClock, &QTimer::timeout, this, [this] {
        if (m_handlersRunning == 0 && !QApplication::activeModalWidget())
            m_recovery.tick(m_editor);
    });
    m_recoveryClock.start();
}

QSizeF MainWindow::outerSizeTwips() const
{
    // The frame where the platform reports one; the client with its menu bar
    // where it does not.
    const QSize outer = frameGeometry().size().expandedTo(size());
    return QSizeF(twips(outer.width()), twips(outer.height()));
}

void MainWindow::applyLayout()
{
    const QSizeF outer = outerSizeTwips();
    m_laidOutFor = frameGeometry().size();
    m_editor.frameDirty = true;
    layoutWindow(m_editor.view, m_editor.shell, m_surface, float(outer.width()), float(outer.height()));
    m_controls.map->setGeometry(0, 0, px(m_editor.view.mapWidth), px(m_editor.view.mapHeight));
    layOutPanels();
}

void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    // The window opens no larger than its screen, on whichever screen it opens.
    if (!m_shownOnce) {
        m_shownOnce = true;
        fitOnScreen();
    }
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    applyLayout();
}

void MainWindow::moveEvent(QMoveEvent* event)
{
    QMainWindow::moveEvent(event);
    // A window manager adds its frame only after the window is first shown;
    // the layout follows the outer size once the frame is known, and the
    // window, frame and all, must still fit its screen.
    if (frameGeometry().size() != m_laidOutFor) {
        fitOnScreen();
        applyLayout();
    }
}

void MainWindow::handle(const std::function<void()>& handler)
{
    ++m_handlersRunning;
    handler();
    --m_handlersRunning;
    m_editor.frameDirty = true;
    syncControls();
    unhookWheelIfReleased();
    endIfDue();
}

void MainWindow::frameTick()
{
    // Handlers run only between frames: a handler that lets events run, or
    // waits in a dialog, holds the loop and the flash until it returns.
    if (m_handlersRunning > 0 || QApplication::activeModalWidget())
        return;
    // On a screen of another pixel ratio the map is drawn anew at its pixels.
    const double ratio = m_controls.map->devicePixelRatioF();
    if (ratio != m_surface.pixelRatio()) {
        m_surface.setPixelRatio(ratio);
        m_editor.frameDirty = true;
    }
    if (m_loop.tick(m_editor))
        syncControls();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (m_editor.shell.ended) {
        event->accept();
        return;
    }
    // The window stays; the shutdown timer ends the program two ticks later.
    event->ignore();
    requestClose();
}

void MainWindow::requestClose()
{
    plotwell::requestClose(m_editor.shell);
    if (m_editor.shell.endTimerEnabled && !m_endTimer.isActive())
        m_endTimer.start();
}

void MainWindow::openFiles(const QStringList& paths)
{
    handle([&] { dropFiles(m_editor, paths); });
}

void MainWindow::endTimerTick()
{
    plotwell::endTimerTick(m_editor.shell);
    unhookWheelIfReleased();
    endIfDue();
}

void MainWindow::endIfDue()
{
    // The timer can tick while a handler lets events run, as a load does;
    // the program ends once that handler has returned, so that the copies of
    // the unsaved layers hold its whole edit and not half of it.
    if (!m_editor.shell.ended || m_handlersRunning > 0 || m_programEnded)
        return;
    m_programEnded = true;
    m_frameClock.stop();
    m_endTimer.stop();
    m_recoveryClock.stop();
    // The program ends without asking: what is not saved is kept for the next run.
    m_recovery.flush(m_editor);
    ended();
}

void MainWindow::hookMouseWheel()
{
    qApp->installEventFilter(this);
    m_wheelHooked = true;
}

void MainWindow::unhookWheelIfReleased()
{
    // The editor lets the wheel go at the first shutdown tick, or when a
    // step of it failed.
    if (m_wheelHooked && !m_editor.shell.wheelHooked) {
        qApp->removeEventFilter(this);
        m_wheelHooked = false;
    }
}

void MainWindow::takeWheel(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || (widget != this && !isAncestorOf(widget)))
        return;
    // A wheel event not taken by a widget is handed to its parents as copies
    // that share its time; the first delivery alone is a new turn of the wheel.
    auto* wheel = static_cast<QWheelEvent*>(event);
    if (!wheel->spontaneous() && wheel->timestamp() == m_lastWheelTime)
        return;
    m_lastWheelTime = wheel->timestamp();
    const int notches = m_wheelNotches.feed(wheel->angleDelta().y());
    for (int i = 0; i < std::abs(notches); ++i)
        handle([&] { onMouseWheel(m_editor, notches); });
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    // The wheel is heard wherever it turns in the window, and its own
    // handling of the event goes on.
    if (event->type() == QEvent::Wheel) {
        takeWheel(watched, event);
        return false;
    }
    // The right button on the height filter asks for the range and does not
    // toggle the filter.
    if (watched == m_controls.chkHeight
        && (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease
            || event->type() == QEvent::MouseButtonDblClick)) {
        auto* mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() == Qt::RightButton) {
            if (event->type() == QEvent::MouseButtonPress)
                handle([this] { chkHeightMouseDown(m_editor, kRightButton); });
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::syncControls()
{
    Controls& c = m_controls;
    for (int i = 0; i < kToolCount; ++i) {
        const bool raised = ToolId(i) == m_editor.tools.current();
        // The chosen tool's icon alone stands out, raised. A frame style set
        // again repaints the icon and its frame, every frame of the loop.
        const int style = raised ? QFrame::WinPanel | QFrame::Raised : QFrame::Box | QFrame::Plain;
        if (c.imgTool[i]->frameStyle() != style)
            c.imgTool[i]->setFrameStyle(style);
    }
    setTextIfChanged(c.lblScale, m_editor.view.zoom.caption);
    c.lnScale->move(px(m_editor.view.zoom.markerX1) - c.lnScale->width() / 2, c.lnScale->y());

    for (int n = 0; n < kLayerCount; ++n) {
        setCheckedQuietly(c.chkLayer[n], m_editor.display.layerChecked[n]);
        if (c.chkLayer[n]->text() != m_editor.doc.homes[n].caption)
            c.chkLayer[n]->setText(m_editor.doc.homes[n].caption);
        setBackground(c.lbActiveLayer[n], markerColor(m_editor, n));
    }
    setCheckedQuietly(c.chkLines, m_editor.display.linesChecked);
    setCheckedQuietly(c.chkLabels, m_editor.display.labelsChecked);
    setCheckedQuietly(c.chkHeight, m_editor.display.heightChecked);
    setCheckedQuietly(c.chkInvert, m_editor.display.invertChecked);
    setCheckedQuietly(c.chkFlash, m_editor.display.flashChecked);
    const Palette& palette = m_editor.palette;
    setBackground(c.lblActiveColor, palette.activeColor);
    for (int i = 0; i < kPresetCount; ++i)
        setBackground(c.lblColor[i], palette.swatchColors[std::size_t(i)]);
    for (int i = 0; i < 3; ++i)
        setTextIfChanged(c.sldColor[i], palette.stripCaptions[std::size_t(i)]);
    setBackground(c.lblBkgColor, palette.backgroundSwatch);

    setTextIfChanged(c.lblX, m_editor.view.readout.x);
    setTextIfChanged(c.lblY, m_editor.view.readout.y);
    setTextIfChanged(c.lblZ, m_editor.view.readout.z);
    setTextIfChanged(c.lblLoc, m_editor.view.readout.loc);
    const EditHistory& history = m_editor.history;
    for (auto [action, text, enabled] : {std::tuple(c.mnuUndo, history.undoText(), history.canUndo()),
                                         std::tuple(c.mnuRedo, history.redoText(), history.canRedo())}) {
        if (action->text() != text)
            action->setText(text);
        action->setEnabled(enabled);
    }
    c.mnuRecover->setEnabled(m_recovery.canRecover());
    const GameLogFollower& follower = m_editor.follower;
    if (c.mnuFollowLog->isChecked() != follower.following())
        c.mnuFollowLog->setChecked(follower.following());
    if (c.mnuRecordPath->isChecked() != follower.recordPath)
        c.mnuRecordPath->setChecked(follower.recordPath);
    c.mnuStopFollowing->setEnabled(follower.following());
    if (c.mnuKeepPlayerInView->isChecked() != follower.keepInView)
        c.mnuKeepPlayerInView->setChecked(follower.keepInView);
    if (c.mnuSnapToEnds->isChecked() != m_editor.tools.state.snapToEnds)
        c.mnuSnapToEnds->setChecked(m_editor.tools.state.snapToEnds);
    c.mnuMoveSelection->setEnabled(m_editor.doc.hasSelection());
    c.mnuLabelProperties->setEnabled(canEditLabelProperties(m_editor));
    c.map->syncOverlays();
}

} // namespace plotwell
