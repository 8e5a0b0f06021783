#include "editor/editmenu.h"
#include "editor/edits.h"
#include "editor/gamelog.h"
#include "editor/helpcommands.h"
#include "editor/layercommands.h"
#include "editor/maploading.h"
#include "editor/mapsaving.h"
#include "editor/picturecommands.h"
#include "editor/underlaycommands.h"
#include "shell/widgets/keycodes.h"
#include "shell/widgets/mainwindow.h"
#include "tools/intersection.h"

#include <QMenuBar>

namespace plotwell {

void MainWindow::buildMenus()
{
    QMenu* file = menuBar()->addMenu(QStringLiteral("File"));
    QMenu* open = file->addMenu(QStringLiteral("Open EQ Map File"));
    const char* layerCaptions[kLayerCount] = {"As Base Layer", "As Layer 1", "As Layer 2", "As Layer 3"};
    for (int n = 0; n < kLayerCount; ++n) {
        open->addAction(QString::fromLatin1(layerCaptions[n]), this,
                        [this, n] { handle([&] { loadLayerFromMenu(m_editor, std::int16_t(n)); }); });
    }
    file->addAction(QStringLiteral("Open Underlay Image"), this,
                    [this] { handle([&] { openUnderlayFromMenu(m_editor); }); });
    m_controls.mnuRecover = file->addAction(QStringLiteral("Recover Unsaved Layers"), this,
                                            [this] { handle([&] { m_recovery.recover(m_editor); }); });
    file->addSeparator();
    file->addAction(QStringLiteral("Close all layers"), this, [this] { handle([&] { closeAllLayers(m_editor); }); });
    file->addAction(QStringLiteral("Close Underlay Image"), this, [this] { handle([&] { closeUnderlay(m_editor); }); });
    file->addSeparator();
    file->addAction(QStringLiteral("Save all layers"), this, [this] { handle([&] { saveAllLayers(m_editor); }); });
    file->addAction(QStringLiteral("Export Picture..."), this,
                    [this] { handle([&] { exportPictureFromMenu(m_editor); }); });
    file->addSeparator();
    file->addAction(QStringLiteral("Exit"), this, [this] { requestClose(); });

    buildEditMenu();

    QMenu* tools = menuBar()->addMenu(QStringLiteral("Tools"));
    tools->addAction(QStringLiteral("Plot Intersection"), this,
                     [this] { handle([&] { plotIntersection(m_editor.toolContext()); }); });
    tools->addAction(QStringLiteral("Find Label by Keyword"), this,
                     [this] { handle([&] { findLabels(m_editor.toolContext()); }); });
    tools->addSeparator();
    // Checked while a log is followed; chosen then, it stops.
    m_controls.mnuFollowLog = tools->addAction(QStringLiteral("Follow Game Log..."), this,
                                               [this] { handle([&] { followGameLogFromMenu(m_editor); }); });
    m_controls.mnuFollowLog->setCheckable(true);
    m_controls.mnuRecordPath =
        tools->addAction(QStringLiteral("Record Path"), this, [this] { handle([&] { toggleRecordPath(m_editor); }); });
    m_controls.mnuRecordPath->setCheckable(true);
    m_controls.mnuStopFollowing =
        tools->addAction(QStringLiteral("Stop Following"), this, [this] { handle([&] { stopFollowing(m_editor); }); });
    m_controls.mnuKeepPlayerInView = tools->addAction(QStringLiteral("Keep Player in View"), this,
                                                      [this] { handle([&] { toggleKeepPlayerInView(m_editor); }); });
    m_controls.mnuKeepPlayerInView->setCheckable(true);

    QMenu* help = menuBar()->addMenu(QStringLiteral("Help"));
    help->addAction(QStringLiteral("Readme"), this,
                    [this] { handle([&] { showReadme(m_editor.services.launcher, m_editor.services.dialogs); }); });
    help->addAction(QStringLiteral("About"), this, [this] { handle([&] { showAbout(m_editor.services.dialogs); }); });
}

void MainWindow::buildEditMenu()
{
    QMenu* edit = menuBar()->addMenu(QStringLiteral("Edit"));
    m_controls.mnuUndo = edit->addAction(QStringLiteral("Undo"), this, [this] { handle([&] { undoEdit(m_editor); }); });
    m_controls.mnuRedo = edit->addAction(QStringLiteral("Redo"), this, [this] { handle([&] { redoEdit(m_editor); }); });
    // The platform's own keys, and the Edit menu's keys whatever the platform's habit.
    QList<QKeySequence> undoKeys = QKeySequence::keyBindings(QKeySequence::Undo);
    QList<QKeySequence> redoKeys = QKeySequence::keyBindings(QKeySequence::Redo);
    for (const EditShortcut& shortcut : kEditShortcuts) {
        QList<QKeySequence>& keys = shortcut.command == EditKeyCommand::Undo ? undoKeys : redoKeys;
        const QKeySequence key(qtModifiers(shortcut.shift) | Qt::Key(shortcut.keyCode));
        if (!keys.contains(key))
            keys << key;
    }
    m_controls.mnuUndo->setShortcuts(undoKeys);
    m_controls.mnuRedo->setShortcuts(redoKeys);
    edit->addSeparator();
    m_controls.mnuMoveSelection = edit->addAction(QStringLiteral("Move Selection..."), this,
                                                  [this] { handle([&] { moveSelectionFromMenu(m_editor); }); });
    m_controls.mnuLabelProperties = edit->addAction(QStringLiteral("Label Properties..."), this,
                                                    [this] { handle([&] { labelPropertiesFromMenu(m_editor); }); });
    edit->addSeparator();
    m_controls.mnuSnapToEnds = edit->addAction(QStringLiteral("Snap to Line Ends"), this,
                                               [this] { handle([&] { toggleSnapToLineEnds(m_editor); }); });
    m_controls.mnuSnapToEnds->setCheckable(true);
}

} // namespace plotwell
