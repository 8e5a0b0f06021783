#include "editor/edits.h"

#include "editor/editor.h"

namespace plotwell {

void letEventsRun(Editor& editor)
{
    if (editor.history.editing()) {
        editor.eventsWaiting = true;
        return;
    }
    editor.eventsWaiting = false;
    editor.services.events.processEvents();
}

void releaseHeldFrame(Editor& editor)
{
    editor.tools.state.holdDrawing = false;
    editor.frameDirty = true;
}

void undoEdit(Editor& editor)
{
    editor.history.undo(editor.view.currentScale);
    releaseHeldFrame(editor);
}

bool editShortcutPressed(Editor& editor, int keyCode, int shift)
{
    for (const EditShortcut& key : kEditShortcuts) {
        if (key.keyCode != keyCode || key.shift != shift)
            continue;
        if (key.command == EditKeyCommand::Undo)
            undoEdit(editor);
        else
            redoEdit(editor);
        return true;
    }
    return false;
}

void redoEdit(Editor& editor)
{
    editor.history.redo(editor.view.currentScale);
    releaseHeldFrame(editor);
}

LayerStep::LayerStep(Editor& editor) : m_editor(editor), m_mark(appendMark(editor.doc))
{
    m_homes = editor.doc.homes;
    editor.history.beginEdit();
}

LayerStep::~LayerStep()
{
    if (m_pushed)
        return;
    m_editor.history.endEdit();
    if (m_editor.eventsWaiting)
        letEventsRun(m_editor);
}

void LayerStep::takeLayers(unsigned mask)
{
    MapDocument& doc = m_editor.doc;
    if (mask == (1u << kLayerCount) - 1)
        m_removed = doc.takeRecordsFrom(0, 0);
    else
        m_removed = doc.takeRecordsWhere([mask](std::int16_t layer, bool) { return (mask & (1u << layer)) != 0; });
    m_mark = appendMark(doc);
}

void LayerStep::push(const QString& what, unsigned savedMask)
{
    if (m_pushed)
        return;
    m_pushed = true;
    m_editor.history.endEdit();
    record(what, savedMask);
    if (m_editor.eventsWaiting)
        letEventsRun(m_editor);
}

void LayerStep::record(const QString& what, unsigned savedMask)
{
    std::vector<HomeBefore> changed;
    for (std::int16_t n = 0; n < kLayerCount; ++n) {
        const LayerHome& before = m_homes[std::size_t(n)];
        if ((savedMask & (1u << n)) || !before.sameFileAs(m_editor.doc.homes[std::size_t(n)]))
            changed.push_back({n, before});
    }
    auto step = std::make_unique<RecordsCommand>(what, std::move(m_removed), m_editor.doc, m_mark, std::move(changed));
    if (step->changesNothing())
        return;
    m_editor.history.push(std::move(step));
    for (int n = 0; n < kLayerCount; ++n) {
        if (savedMask & (1u << n))
            m_editor.history.markSaved(n);
    }
}

} // namespace plotwell
