#pragma once

#include "document/colorrgb.h"
#include "document/maprecords.h"
#include "document/takenrecords.h"

#include <QString>

#include <array>
#include <cstdint>
#include <deque>
#include <memory>

namespace plotwell {

class MapDocument;

// Where the record arrays end: what is appended after it is a step's own.
struct AppendMark {
    std::size_t lines = 0;
    std::size_t labels = 0;
};
AppendMark appendMark(const MapDocument& doc);

// One undoable step: an edit of the records that has been made, which can be
// undone and then redone. A step keeps only what the edit changed.
class EditCommand {
public:
    virtual ~EditCommand() = default;

    // What the Edit menu calls it: "Line" gives "Undo Line" and "Redo Line".
    virtual QString text() const = 0;
    // Points put back are scaled by scale, the view's.
    virtual void undo(MapDocument& doc, float scale) = 0;
    virtual void redo(MapDocument& doc, float scale) = 0;
    // Whether the document is as the step left it (done) or as it found it
    // (not done), as far as the step can tell from what it changes. A
    // document changed past the history is not undone into.
    virtual bool fits(const MapDocument& doc, bool done) const = 0;
    // A bit (1 << layer) for each layer whose records or file the step changes.
    virtual unsigned layerMask() const = 0;
    // The memory the step holds now.
    virtual std::size_t bytes() const = 0;
    // Takes the next step into this one, as the parts of one gesture (a
    // freehand stroke, a drag along a colour strip); false when it cannot.
    virtual bool mergeWith(EditCommand& next)
    {
        (void)next;
        return false;
    }

private:
    friend class EditHistory;
    // Each layer's state before and after the step (see EditHistory::layerState).
    std::array<std::uint64_t, kLayerCount> m_before{};
    std::array<std::uint64_t, kLayerCount> m_after{};
};

// The steps that can be undone and redone on one document, oldest first.
// Qt's QUndoStack is not used: it bounds the number of steps, not their
// memory, and it knows one clean state for the whole document, where each
// layer is saved to a file of its own, and a save can write some layers and
// not others.
class EditHistory {
public:
    static constexpr std::size_t kDefaultByteLimit = std::size_t(256) << 20;

    explicit EditHistory(MapDocument& doc) : m_doc(doc) {}
    EditHistory(const EditHistory&) = delete;
    EditHistory& operator=(const EditHistory&) = delete;

    // Whether a step continues a gesture: the steps of one gesture, pushed
    // one after another, make one step, until endGesture.
    enum class Gesture { Ends, Continues };

    // Records an edit just made as the newest step; steps undone before it
    // can no longer be redone. Over the memory limit, the oldest steps go.
    // (Undoing and redoing move records between the document and the steps,
    // and leave the bound to the next step.)
    void push(std::unique_ptr<EditCommand> command, Gesture gesture = Gesture::Ends);

    // Edits made through the document's own operations, recorded as steps:
    //     const AppendMark mark = appendMark(doc);
    //     doc.addLine(text, layer, scale); // as many as there are
    //     history.recordAppended(mark, QStringLiteral("Line"));
    // Everything appended since mark as one step called what; no step when
    // nothing was. A step that continues a gesture joins the step before it,
    // when that one appended just before it under the same name.
    void recordAppended(AppendMark mark, const QString& what, Gesture gesture = Gesture::Ends);
    // Records just taken out of the document as one step; none when empty.
    void recordRemoved(TakenRecords removed, const QString& what);
    // Gives every selected line and label the colour, as one step when any of
    // them changes. Steps that continue a gesture on the same records join.
    void recolorSelection(ColorRGB colour, Gesture gesture = Gesture::Ends);
    // The gesture in progress ended: the next edit is a step of its own.
    void endGesture() { m_open = false; }
    // A gesture is in progress: its next part joins the newest step.
    bool gestureOpen() const { return m_open; }

    // While an edit that is to become a step is under way (a load lets
    // events run while it reads), undo and redo wait for it to end.
    void beginEdit() { ++m_editing; }
    void endEdit() { --m_editing; }
    bool editing() const { return m_editing > 0; }

    bool canUndo() const { return m_index > 0 && m_editing == 0; }
    bool canRedo() const { return m_index < m_steps.size() && m_editing == 0; }
    // "Undo Line", or "Undo" when there is nothing to undo; likewise "Redo ...".
    QString undoText() const;
    QString redoText() const;
    // Points put back are scaled by scale, the view's.
    void undo(float scale);
    void redo(float scale);
    // Forgets every step; the document stays as it is.
    void clear();

    std::size_t stepCount() const { return m_steps.size(); }
    // How many of the steps are done, and can be undone.
    std::size_t doneCount() const { return m_index; }
    std::size_t bytes() const { return m_bytes; }
    void setByteLimit(std::size_t bytes);

    // A number for what each layer's records and file are: every step that
    // changes a layer gives it a new one, and undoing the step gives the old
    // one back. A layer is saved while its state is the one its home says
    // its file holds.
    std::uint64_t layerState(int layer) const { return m_state[std::size_t(layer)]; }
    bool layerModified(int layer) const;
    void markSaved(int layer);

private:
    void enter(EditCommand& command, unsigned oldMask);
    void trim();

    MapDocument& m_doc;
    std::deque<std::unique_ptr<EditCommand>> m_steps;
    std::size_t m_index = 0; // steps [0, m_index) are done
    std::size_t m_bytes = 0;
    std::size_t m_byteLimit = kDefaultByteLimit;
    bool m_open = false; // the newest step is a gesture that goes on
    int m_editing = 0;
    std::uint64_t m_nextState = 1;
    std::array<std::uint64_t, kLayerCount> m_state{};
};

} // namespace plotwell
