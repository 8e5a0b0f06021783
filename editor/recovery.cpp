#include "editor/recovery.h"

#include "document/mapreader.h"
#include "editor/editor.h"
#include "editor/edits.h"
#include "editor/layercommands.h"
#include "editor/maploading.h"
#include "platform/recoveryplace.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace plotwell {

RecoveryKeeper::RecoveryKeeper(RecoveryPlace& place) : m_place(place)
{
    const QDir folder(place.folder());
    for (const QString& run : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        auto claimed = RecoveryFolder::claim(folder.filePath(run));
        if (!claimed)
            continue; // a program running now holds it
        const std::vector<RecoveryCopy> copies = claimed->copies();
        if (copies.empty()) {
            claimed->removeAll();
            continue;
        }
        for (const RecoveryCopy& copy : copies) {
            const auto same = std::find_if(m_left.begin(), m_left.end(),
                                           [&copy](const RecoveryCopy& c) { return c.layer == copy.layer; });
            if (same == m_left.end())
                m_left.push_back(copy);
            else if (same->written < copy.written)
                *same = copy;
        }
        m_claimed.push_back(std::move(claimed));
    }
    // The lock of a run that ended before it wrote anything goes with it.
    for (const QString& lock : folder.entryList({QStringLiteral("*.lock")}, QDir::Files)) {
        const QString run = folder.filePath(lock.chopped(5));
        if (!QFileInfo::exists(run))
            RecoveryFolder::claim(run);
    }
}

RecoveryKeeper::~RecoveryKeeper()
{
    finishCopy(true);
    if (m_own)
        m_own->removeIfEmpty();
}

RecoveryFolder* RecoveryKeeper::ownFolder()
{
    if (m_own || m_ownRefused)
        return m_own.get();
    // A name no other run has: the time and this program's process.
    const QDir folder(m_place.folder());
    const QString run =
        QStringLiteral("%1-%2").arg(QDateTime::currentMSecsSinceEpoch()).arg(QCoreApplication::applicationPid());
    if (QDir().mkpath(folder.path()) && !folder.exists(run))
        m_own = RecoveryFolder::claim(folder.filePath(run));
    m_ownRefused = !m_own;
    return m_own.get();
}

void RecoveryKeeper::tick(const Editor& editor)
{
    finishCopy(false);
    for (std::int16_t layer = 0; layer < kLayerCount; ++layer)
        keep(editor, layer, false);
}

bool RecoveryKeeper::flush(const Editor& editor)
{
    finishCopy(true);
    bool all = true;
    for (std::int16_t layer = 0; layer < kLayerCount; ++layer)
        all = keep(editor, layer, true) && all;
    return all;
}

bool RecoveryKeeper::keep(const Editor& editor, std::int16_t layer, bool now)
{
    Layer& l = m_layers[std::size_t(layer)];
    const qint64 time = m_place.msecsNow();
    if (!editor.history.layerModified(layer)) {
        if (m_copying && m_copying->layer == layer)
            finishCopy(true);
        if (l.written)
            m_own->remove(layer);
        l.written = false;
        l.waitingSince = -1;
        return true;
    }
    const std::uint64_t state = editor.history.layerState(layer);
    if (state != l.seenState) {
        l.seenState = state;
        l.changedAt = time;
    }
    const QString& file = editor.doc.homes[layer].layerFile;
    if (l.written && l.writtenState == state && l.writtenFile == file) {
        l.waitingSince = -1;
        return true;
    }
    if (m_copying && m_copying->layer == layer && m_copying->state == state && m_copying->file == file)
        return false; // on its way
    if (l.waitingSince < 0)
        l.waitingSince = time;
    const bool due = time - l.changedAt >= kQuietMsecs || time - l.waitingSince >= kLongestWaitMsecs;
    if (now || (due && !m_copying && (!l.written || time - l.writtenAt >= kQuietMsecs)))
        return write(editor, layer, now);
    return false;
}

bool RecoveryKeeper::write(const Editor& editor, std::int16_t layer, bool now)
{
    Layer& l = m_layers[std::size_t(layer)];
    RecoveryFolder* folder = ownFolder();
    if (!folder)
        return false;
    // A copy that could not be written is tried again no sooner than a new one would be.
    l.writtenAt = m_place.msecsNow();
    const std::uint64_t state = editor.history.layerState(layer);
    const QString& file = editor.doc.homes[layer].layerFile;
    const FileStamp stamp = editor.doc.homes[layer].stamp;
    if (now) {
        if (!folder->write(editor.doc, layer, file, stamp))
            return false;
        l.written = true;
        l.writtenState = state;
        l.writtenFile = file;
        return true;
    }
    // Copying the records takes a fraction of the time that formatting them does.
    auto records = std::make_shared<const MapDocument>(editor.doc);
    m_copying = Copying{layer, state, file, std::async(std::launch::async, [folder, records, layer, file, stamp] {
                            return folder->write(*records, layer, file, stamp);
                        })};
    return false;
}

void RecoveryKeeper::finishCopy(bool wait)
{
    if (!m_copying || (!wait && m_copying->written.wait_for(std::chrono::seconds(0)) != std::future_status::ready))
        return;
    Layer& l = m_layers[std::size_t(m_copying->layer)];
    if (m_copying->written.get()) {
        l.written = true;
        l.writtenState = m_copying->state;
        l.writtenFile = m_copying->file;
    }
    m_copying.reset();
}

void RecoveryKeeper::recover(Editor& editor)
{
    if (m_left.empty())
        return;
    LayerStep step(editor);
    unsigned mask = 0;
    for (const RecoveryCopy& copy : m_left)
        mask |= 1u << copy.layer;
    step.takeLayers(mask);
    const std::int16_t active = editor.doc.activeLayer;
    for (const RecoveryCopy& copy : m_left) {
        // A copy that stops early keeps what it read, as a load does. The
        // reader puts records for layer 0 into the active layer: while it
        // reads, the copy's own layer is the active one.
        editor.doc.activeLayer = copy.layer;
        readMapFile(copy.records, editor.doc, copy.layer, editor.view.currentScale);
        editor.doc.activeLayer = active;
        LayerHome& home = editor.doc.homes[std::size_t(copy.layer)];
        home.layerFile = copy.file;
        home.caption = copy.file.isEmpty() ? defaultLayerName(copy.layer) : fileNameOf(copy.file);
        home.stamp = copy.stamp;
    }
    step.push(QStringLiteral("Recover Unsaved Layers"));
    releaseHeldFrame(editor);
    for (const RecoveryCopy& copy : m_left)
        setLayerChecked(editor, copy.layer, true);
    m_left.clear();
    // The old copies go once the edits are safe in this run's own; if they
    // cannot be written, the old ones stay for the next run.
    if (flush(editor)) {
        for (const auto& claimed : m_claimed)
            claimed->removeAll();
    }
    m_claimed.clear();
}

} // namespace plotwell
