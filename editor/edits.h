#pragma once

#include "document/editcommands.h"
#include "document/history.h"
#include "document/layerhome.h"
#include "view/viewkeys.h"

#include <QString>

#include <array>

namespace plotwell {

class Editor;

// Lets pending events run, as the fit does. While an edit that is to become
// one step is under way (a load), they wait until the step is recorded:
// an edit made by an event in between would be taken into it, and undone
// with it, not as a step of its own.
void letEventsRun(Editor& editor);

// Something other than the map's own events (a menu command, the game's log)
// changed what the map shows: a frame held by a tool (the Line tool's band,
// the crosshair's mark) is let go, so that the next frame shows the change
// rather than wait for the pointer to move over the map.
void releaseHeldFrame(Editor& editor);

// Edit > Undo and Edit > Redo: the newest step undone, or the step undone
// last redone; the map shows the change.
void undoEdit(Editor& editor);
void redoEdit(Editor& editor);

// The Edit menu's keys, which the window takes before the map sees them:
// Ctrl+Z undoes, Ctrl+Y and Ctrl+Shift+Z redo, whatever the platform's habit.
enum class EditKeyCommand { Undo, Redo };
struct EditShortcut {
    int keyCode;
    int shift; // the modifier mask
    EditKeyCommand command;
};
constexpr EditShortcut kEditShortcuts[] = {
    {Key::Z, kCtrlMask, EditKeyCommand::Undo},
    {Key::Y, kCtrlMask, EditKeyCommand::Redo},
    {Key::Z, kCtrlMask | kShiftMask, EditKeyCommand::Redo},
};
// A key pressed where the Edit menu's shortcuts take it: runs the command it
// stands for and returns true; any other key returns false, for the map.
bool editShortcutPressed(Editor& editor, int keyCode, int shift);

// An edit that may take the records of layers out, append records and give
// layers other files, as one step: loading files, closing all layers,
// recovering. Made before the edit, pushed after it.
class LayerStep {
public:
    explicit LayerStep(Editor& editor);
    ~LayerStep();
    LayerStep(const LayerStep&) = delete;
    LayerStep& operator=(const LayerStep&) = delete;

    Editor& editor() { return m_editor; }
    // Takes out every record of the layers in mask (a bit per layer), before
    // anything is appended.
    void takeLayers(unsigned mask);
    // Pushes the step when anything changed. The layers in savedMask now hold
    // just what their files hold.
    void push(const QString& what, unsigned savedMask = 0);

private:
    void record(const QString& what, unsigned savedMask);
    Editor& m_editor;
    std::array<LayerHome, kLayerCount> m_homes; // as they were before
    TakenRecords m_removed;
    AppendMark m_mark;
    bool m_pushed = false;
};

} // namespace plotwell
