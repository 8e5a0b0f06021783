#pragma once

#include "editor/editor.h"
#include "editor/recovery.h"
#include "editor/renderloop.h"
#include "platform/qimagesurface.h"
#include "platform/qtservices.h"
#include "platform/recoveryplace.h"
#include "platform/settingsstore.h"
#include "platform/widgets/qtdialogs.h"
#include "platform/widgets/qtpicturedialog.h"
#include "view/wheel.h"

#include <QCoreApplication>
#include <QMainWindow>
#include <QTimer>

#include <array>

class QAction;
class QCheckBox;
class QFrame;
class QGroupBox;
class QLabel;
class QSlider;
class QPushButton;
class QScrollArea;

namespace plotwell {

class ClickLabel;
class MapArea;

// The controls of the main window that show the editor's state.
struct Controls {
    MapArea* map = nullptr;
    QScrollArea* panels = nullptr; // holds frmTools and frmStuff
    QGroupBox* frmTools = nullptr;
    QGroupBox* frmStuff = nullptr;
    std::array<ClickLabel*, kToolCount> imgTool{};
    ClickLabel* lblScale = nullptr;
    QFrame* lnScale = nullptr;
    ClickLabel* imgAutoSize = nullptr;

    QLabel* lblActiveColor = nullptr;
    std::array<ClickLabel*, kPresetCount> lblColor{};
    std::array<ClickLabel*, 3> sldColor{};
    ClickLabel* lblBkgColor = nullptr;
    std::array<QPushButton*, 3> cmdBkg{};
    QCheckBox* chkAspect = nullptr;
    QCheckBox* chkInvert = nullptr;

    QCheckBox* chkLabels = nullptr;
    QCheckBox* chkLines = nullptr;
    QCheckBox* chkFlash = nullptr;
    std::array<QCheckBox*, kLayerCount> chkLayer{};
    std::array<ClickLabel*, kLayerCount> lbActiveLayer{};

    QCheckBox* chkHeight = nullptr;
    QCheckBox* chkStereo = nullptr;
    QSlider* sldStereo = nullptr;
    QSlider* sldStereoZ = nullptr;
    QSlider* sldBrightness = nullptr;

    QLabel* lblX = nullptr;
    QLabel* lblY = nullptr;
    QLabel* lblZ = nullptr;
    QLabel* lblLoc = nullptr;

    QAction* mnuRecover = nullptr;
    QAction* mnuUndo = nullptr;
    QAction* mnuRedo = nullptr;
    QAction* mnuFollowLog = nullptr;
    QAction* mnuRecordPath = nullptr;
    QAction* mnuStopFollowing = nullptr;
    QAction* mnuKeepPlayerInView = nullptr;
    QAction* mnuMoveSelection = nullptr;
    QAction* mnuLabelProperties = nullptr;
    QAction* mnuSnapToEnds = nullptr;
};

// frmMain: the window. It builds the controls where the layout puts them,
// forwards their events to the editor's handlers and shows the editor's
// state; it has no logic of its own.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    MainWindow();

    Editor& editor() { return m_editor; }
    const Controls& controls() const { return m_controls; }
    const QImage& mapImage() const { return m_surface.image(); }
    // The window's outer size in twips, as the layout rule takes it.
    QSizeF outerSizeTwips() const;

    // One frame of the render loop, then the controls brought up to date.
    void frameTick();
    // Brings every control up to date with the editor's state.
    void syncControls();
    // One tick of the shutdown timer.
    void endTimerTick();
    // Called when the shutdown has run its course: ends the program.
    std::function<void()> ended = [] { QCoreApplication::exit(0); };
    // Opens map files as if they were dropped on the map.
    void openFiles(const QStringList& paths);

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The area at the right that holds the frames; returns the widget they go in.
    QWidget* buildPanels(QWidget* client);
    void layOutPanels();
    // Makes the window no larger than the room its screen has for windows,
    // and moves it onto the screen.
    void fitOnScreen();
    void useLayoutFont();
    void buildWindow();
    void startClocks();
    void buildMenus();
    void buildEditMenu();
    void buildToolFrame();
    void buildOptionsFrame();
    void buildPaletteBlock(QWidget* frame);
    void buildBackgroundGroup(QWidget* frame);
    void buildShowBox(QWidget* frame);
    void buildHeightBox(QWidget* frame);
    void buildReadout(QWidget* frame);
    void applyLayout();
    void hookMouseWheel();
    void unhookWheelIfReleased();
    // A wheel event on the window or a child: one step of the editor's wheel
    // handler per whole notch.
    void takeWheel(QObject* watched, QEvent* event);
    void requestClose();
    // Ends the program once the shutdown has run its course and no handler runs.
    void endIfDue();
    // Runs a handler, then shows its effects. No frame is drawn while a
    // handler runs, even when it lets events run or shows a dialog.
    void handle(const std::function<void()>& handler);

    QImageSurface m_surface;
    QtFileDialog m_fileDialog{this};
    QtDialogs m_dialogs{this};
    QtSettingsStore m_settings;
    QtEventPump m_events;
    QtClipboard m_clipboard;
    QtLauncher m_launcher;
    QtProgress m_progress{this};
    QtPictureDialog m_pictureDialog{this};
    Editor m_editor;
    RenderLoop m_loop;
    QTimer m_frameClock;
    int m_handlersRunning = 0;
    bool m_wheelHooked = false;
    WheelNotches m_wheelNotches;
    quint64 m_lastWheelTime = ~quint64(0);
    QSize m_laidOutFor;
    QWidget* m_panelContent = nullptr;
    bool m_shownOnce = false;
    QTimer m_endTimer;
    bool m_programEnded = false;
    QtRecoveryPlace m_recoveryPlace;
    RecoveryKeeper m_recovery{m_recoveryPlace};
    QTimer m_recoveryClock;
    Controls m_controls;
};

} // namespace plotwell
