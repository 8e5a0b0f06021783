#include "editor/edits.h"

#include "editor/editor.h"

namespace plotwell {

AppendMark appendMark(const MapDocument& doc) { return {doc.lineCount(), doc.labelCount()}; }

void pushAppended(Editor& editor, AppendMark mark, const QString& what, EditHistory::Gesture gesture)
{
    if (editor.doc.lineCount() == mark.lines && editor.doc.labelCount() == mark.labels)
        return;
    editor.history.push(std::make_unique<RecordsCommand>(what, TakenRecords(), editor.doc, mark), gesture);
}

void pushRemoved(Editor& editor, TakenRecords removed, const QString& what)
{
    if (removed.empty())
        return;
    const AppendMark end = appendMark(editor.doc);
    editor.history.push(std::make_unique<RecordsCommand>(what, std::move(removed), editor.doc, end));
}

void recolorSelection(Editor& editor, ColorRGB colour, EditHistory::Gesture gesture)
{
    auto step = std::make_unique<RecolorCommand>(editor.doc, colour);
    if (!step->changesAny())
        return;
    step->redo(editor);
    editor.history.push(std::move(step), gesture);
}

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
    editor.holdDrawing = false;
    editor.frameDirty = true;
}

void undoEdit(Editor& editor)
{
    editor.history.undo(editor);
    releaseHeldFrame(editor);
}

void redoEdit(Editor& editor)
{
    editor.history.redo(editor);
    releaseHeldFrame(editor);
}

LayerStep::LayerStep(Editor& editor) : m_editor(editor), m_mark(appendMark(editor.doc))
{
    for (std::int16_t n = 0; n < kLayerCount; ++n)
        m_files[std::size_t(n)] = layerFileOf(editor, n);
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
    std::vector<LayerFile> changed;
    for (std::int16_t n = 0; n < kLayerCount; ++n) {
        const LayerFile& before = m_files[std::size_t(n)];
        if ((savedMask & (1u << n)) || !sameFile(before, layerFileOf(m_editor, n)))
            changed.push_back(before);
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
