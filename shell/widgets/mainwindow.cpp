#include "shell/widgets/mainwindow.h"

#include "document/layercontrols.h"
#include "render/displayhandlers.h"
#include "shell/shutdown.h"
#include "shell/startup.h"
#include "shell/widgets/controls.h"
#include "shell/widgets/maparea.h"
#include "shell/widgets/twips.h"
#include "shell/windowlayout.h"
#include "view/zoom.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGroupBox>
#include <QMenuBar>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QSlider>

// The icons are compiled into this library; a static library's resources
// must be registered by name, outside any namespace.
static void registerResources() { Q_INIT_RESOURCE(resources); }

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
    : m_editor(Services{m_surface, m_fileDialog, m_dialogs, m_settings, m_events, m_clipboard})
{
    registerResources();
    m_editor.decimalSeparator = systemDecimalSeparator();
    m_surface.resize(m_editor.map.width, m_editor.map.height);

    // The controls were laid out for a narrow 8-point face: a sans-serif of
    // Arial's widths keeps every caption whole; else the platform's own.
    QFont font = this->font();
    font.setFamilies({QStringLiteral("Arial"), QStringLiteral("Liberation Sans"), QStringLiteral("Helvetica"),
                      font.family()});
    font.setPointSizeF(8.25);
    setFont(font);

    auto* client = new QWidget(this);
    setCentralWidget(client);
    m_controls.map = new MapArea(m_editor, m_surface.image(), client);
    m_controls.map->changed = [this] { syncControls(); };
    m_editor.focusMap = [this] { m_controls.map->setFocus(Qt::OtherFocusReason); };
    m_surface.onRefresh = [this] { m_controls.map->update(); };
    buildMenus();
    buildToolFrame();
    buildOptionsFrame();

    startUp(m_editor);
    setWindowTitle(windowCaption());
    resize(px(kClientWidth), px(kClientHeight) + menuBar()->sizeHint().height());
    applyLayout();
    syncControls();
    finishStartUp(m_editor);

    // The render loop: one frame per tick of a clock paced like the display;
    // events run between ticks, so every handler runs between two frames.
    m_frameClock.setTimerType(Qt::PreciseTimer);
    m_frameClock.setInterval(16);
    connect(&m_frameClock, &QTimer::timeout, this, &MainWindow::frameTick);
    m_frameClock.start();

    m_endTimer.setInterval(1000);
    connect(&m_endTimer, &QTimer::timeout, this, &MainWindow::endTimerTick);
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
    layoutWindow(m_editor, float(outer.width()), float(outer.height()));
    m_controls.map->setGeometry(0, 0, px(m_editor.map.width), px(m_editor.map.height));
    m_controls.frmTools->move(px(m_editor.shell.toolsLeft), 0);
    m_controls.frmStuff->move(px(m_editor.shell.stuffLeft), px(900));
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    applyLayout();
}

void MainWindow::frameTick()
{
    m_loop.tick(m_editor);
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
    plotwell::requestClose(m_editor);
    if (m_editor.shell.endTimerEnabled && !m_endTimer.isActive())
        m_endTimer.start();
}

void MainWindow::endTimerTick()
{
    plotwell::endTimerTick(m_editor);
    if (m_editor.shell.ended) {
        m_frameClock.stop();
        m_endTimer.stop();
        QCoreApplication::exit(0);
    }
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
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
        const bool raised = i == m_editor.tools.currentTool;
        c.imgTool[i]->setFrameStyle(raised ? QFrame::Panel | QFrame::Raised : QFrame::Box | QFrame::Plain);
    }
    setTextIfChanged(c.lblScale, m_editor.zoom.caption);
    c.lnScale->move(px(m_editor.zoom.markerX1) - c.lnScale->width() / 2, c.lnScale->y());

    for (int n = 0; n < kLayerCount; ++n) {
        setCheckedQuietly(c.chkLayer[n], m_editor.layers.checked[n]);
        if (c.chkLayer[n]->text() != m_editor.layers.captions[n])
            c.chkLayer[n]->setText(m_editor.layers.captions[n]);
        setBackground(c.lbActiveLayer[n], markerColor(m_editor, n));
    }
    setCheckedQuietly(c.chkLines, m_editor.display.linesChecked);
    setCheckedQuietly(c.chkLabels, m_editor.display.labelsChecked);
    setCheckedQuietly(c.chkHeight, m_editor.display.heightChecked);
    setCheckedQuietly(c.chkInvert, m_editor.display.invertChecked);
    setCheckedQuietly(c.chkFlash, m_editor.display.flashChecked);
    setBackground(c.lblActiveColor, m_editor.palette.activeColor);
    setBackground(c.lblBkgColor, m_surface.backColor());

    setTextIfChanged(c.lblX, m_editor.readout.x);
    setTextIfChanged(c.lblY, m_editor.readout.y);
    setTextIfChanged(c.lblZ, m_editor.readout.z);
    setTextIfChanged(c.lblLoc, m_editor.readout.loc);
}

} // namespace plotwell
