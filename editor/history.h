#pragma once

#include "document/maprecords.h"

#include <QString>

#include <array>
#include <cstdint>
#include <deque>
#include <memory>

namespace plotwell {

class Editor;

// One undoable step: an edit of the records that has been made, which can be
// undone and then redone. A step keeps only what the edit changed.
class EditCommand {
public:
    virtual ~EditCommand() = default;

    // What the Edit menu calls it: "Line" gives "Undo Line" and "Redo Line".
    virtual QString text() const = 0;
    virtual void undo(Editor& editor) = 0;
    virtual void redo(Editor& editor) = 0;
    // Whether the document is as the step left it (done) or as it found it
    // (not done), as far as the step can tell from what it changes. A
    // document changed past the history is not undone into.
    virtual bool fits(const Editor& editor, bool done) const = 0;
    // A bit (1 << layer) for each layer whose records or file the step changes.
    virtual unsigned layerMask() const = 0;
    // The memory the step holds now.
    virtual std::size_t bytes() const = 0;
    // Takes the next step into this one, as the parts of one gesture (a
    // freehand stroke, a drag along a colour strip); false when it cannot.
    virtual bool mergeWith(EditCommand& next) { (void)next; return false; }

private:
    friend class EditHistory;
    // Each layer's state before and after the step (see EditHistory::layerState).
    std::array<std::uint64_t, kLayerCount> m_before{};
    std::array<std::uint64_t, kLayerCount> m_after{};
};

// The steps that can be undone and redone, oldest first. Qt's QUndoStack is
// not used: it bounds the number of steps, not their memory, and it knows one
// clean state for the whole document, where each layer is saved to a file of
// its own, and a save can write some layers and not others.
class EditHistory {
public:
    static constexpr std::size_t kDefaultByteLimit = std::size_t(256) << 20;

    // Whether a step continues a gesture: the steps of one gesture, pushed
    // one after another, make one step, until endGesture.
    enum class Gesture { Ends, Continues };

    // Records an edit just made as the newest step; steps undone before it
    // can no longer be redone. Over the memory limit, the oldest steps go.
    // (Undoing and redoing move records between the document and the steps,
    // and leave the bound to the next step.)
    void push(std::unique_ptr<EditCommand> command, Gesture gesture = Gesture::Ends);
    // The gesture in progress ended: the next edit is a step of its own.
    void endGesture() { m_open = false; }

    // While an edit that is to become a step is under way (a load lets
    // events run while it reads), undo and redo wait for it to end.
    void beginEdit() { ++m_editing; }
    void endEdit() { --m_editing; }

    bool canUndo() const { return m_index > 0 && m_editing == 0; }
    bool canRedo() const { return m_index < m_steps.size() && m_editing == 0; }
    // "Undo Line", or "Undo" when there is nothing to undo; likewise "Redo ...".
    QString undoText() const;
    QString redoText() const;
    void undo(Editor& editor);
    void redo(Editor& editor);
    // Forgets every step; the document stays as it is.
    void clear();

    std::size_t stepCount() const { return m_steps.size(); }
    // How many of the steps are done, and can be undone.
    std::size_t doneCount() const { return m_index; }
    std::size_t bytes() const { return m_bytes; }
    void setByteLimit(std::size_t bytes);

    // A number for what each layer's records and file are: every step that
    // changes a layer gives it a new one, and undoing the step gives the old
    // one back. A layer is saved while its state is the one marked saved.
    std::uint64_t layerState(int layer) const { return m_state[std::size_t(layer)]; }
    bool layerModified(int layer) const { return m_state[std::size_t(layer)] != m_saved[std::size_t(layer)]; }
    void markSaved(int layer) { m_saved[std::size_t(layer)] = m_state[std::size_t(layer)]; }
    // The state marked saved, for steps that change which file a layer has.
    std::uint64_t& savedState(int layer) { return m_saved[std::size_t(layer)]; }

private:
    void enter(EditCommand& command, unsigned oldMask);
    void trim();

    std::deque<std::unique_ptr<EditCommand>> m_steps;
    std::size_t m_index = 0; // steps [0, m_index) are done
    std::size_t m_bytes = 0;
    std::size_t m_byteLimit = kDefaultByteLimit;
    bool m_open = false; // the newest step is a gesture that goes on
    int m_editing = 0;
    std::uint64_t m_nextState = 1;
    std::array<std::uint64_t, kLayerCount> m_state{};
    std::array<std::uint64_t, kLayerCount> m_saved{};
};

} // namespace plotwell
