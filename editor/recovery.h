#pragma once

#include "document/maprecords.h"
#include "editor/recoverycopies.h"

#include <QString>

#include <array>
#include <cstdint>
#include <future>
#include <memory>
#include <optional>
#include <vector>

namespace plotwell {

class Editor;
class RecoveryPlace;

// Keeps a copy of every layer that has unsaved edits, so that they outlive
// the program: a few seconds after the edits pause, never more often than
// that, in a folder of this run's own. Saving the layer, or undoing back to
// what was saved, removes its copy. Copies left by runs that ended with
// unsaved edits can be recovered; a program running at the same time keeps
// its own, and leaves these alone.
class RecoveryKeeper {
public:
    // A copy waits for the edits to pause this long, but never longer than
    // the longest wait; copies of a layer are written at most this often.
    static constexpr qint64 kQuietMsecs = 3000;
    static constexpr qint64 kLongestWaitMsecs = 30000;

    // Takes the copies that runs which ended left behind.
    explicit RecoveryKeeper(RecoveryPlace& place);
    // Lets them go again, still there for the next run, unless recovered.
    ~RecoveryKeeper();

    // Writes the copies that are due and removes those no longer needed;
    // called twice a second or so. A copy is written by a worker thread from
    // a snapshot of the records, so that a large layer does not hold up the
    // window; one at a time.
    void tick(const Editor& editor);
    // Waits for the copy being written, if any.
    void waitForCopy() { finishCopy(true); }
    // Writes the copy of every layer with unsaved edits now, as when the
    // program ends; false when one could not be written.
    bool flush(const Editor& editor);

    // Copies were left by runs that ended with unsaved edits.
    bool canRecover() const { return !m_left.empty(); }
    // File > Recover Unsaved Layers: each copy left goes into its layer with
    // the layer's file, as one step; its layer is shown. The copies left are
    // removed once this run has its own.
    void recover(Editor& editor);

private:
    // What is known of one layer's copy.
    struct Layer {
        std::uint64_t seenState = 0; // the layer's state when last looked at
        qint64 changedAt = 0; // when it was seen to change
        qint64 waitingSince = -1; // since when the copy is behind; -1 when it is not
        bool written = false; // the copy exists
        std::uint64_t writtenState = 0;
        QString writtenFile;
        qint64 writtenAt = 0;
    };

    // A copy a worker thread is writing.
    struct Copying {
        std::int16_t layer = 0;
        std::uint64_t state = 0;
        QString file;
        std::future<bool> written;
    };

    // Writes or removes the layer's copy when it is due, or at once; false
    // when the layer has edits that no copy holds yet.
    bool keep(const Editor& editor, std::int16_t layer, bool now);
    // Writes the layer's copy, at once or by a worker thread.
    bool write(const Editor& editor, std::int16_t layer, bool now);
    // Takes note of the copy being written once it is, or at once when waiting.
    void finishCopy(bool wait);
    RecoveryFolder* ownFolder();

    RecoveryPlace& m_place;
    std::unique_ptr<RecoveryFolder> m_own; // made at the first copy
    bool m_ownRefused = false;
    std::array<Layer, kLayerCount> m_layers;
    std::optional<Copying> m_copying;
    std::vector<std::unique_ptr<RecoveryFolder>> m_claimed; // the runs whose copies are left
    std::vector<RecoveryCopy> m_left; // the newest copy left of each layer
};

} // namespace plotwell
