#include "document/history.h"

#include "document/editcommands.h"
#include "document/mapdocument.h"

namespace plotwell {

AppendMark appendMark(const MapDocument& doc)
{
    return {doc.lineCount(), doc.labelCount()};
}

QString EditHistory::undoText() const
{
    return m_index > 0 ? QStringLiteral("Undo ") + m_steps[m_index - 1]->text() : QStringLiteral("Undo");
}

QString EditHistory::redoText() const
{
    return m_index < m_steps.size() ? QStringLiteral("Redo ") + m_steps[m_index]->text() : QStringLiteral("Redo");
}

void EditHistory::push(std::unique_ptr<EditCommand> command, Gesture gesture)
{
    const bool continues = gesture == Gesture::Continues;
    if (m_open && continues && m_index == m_steps.size() && !m_steps.empty()) {
        EditCommand& top = *m_steps.back();
        const unsigned oldMask = top.layerMask();
        const std::size_t oldBytes = top.bytes();
        if (top.mergeWith(*command)) {
            enter(top, oldMask);
            m_bytes = m_bytes - oldBytes + top.bytes();
            trim();
            return;
        }
    }
    // What was undone can no longer be redone.
    while (m_steps.size() > m_index) {
        m_bytes -= m_steps.back()->bytes();
        m_steps.pop_back();
    }
    enter(*command, 0);
    m_bytes += command->bytes();
    m_steps.push_back(std::move(command));
    ++m_index;
    m_open = continues;
    trim();
}

void EditHistory::recordAppended(AppendMark mark, const QString& what, Gesture gesture)
{
    if (m_doc.lineCount() == mark.lines && m_doc.labelCount() == mark.labels)
        return;
    push(std::make_unique<RecordsCommand>(what, TakenRecords(), m_doc, mark), gesture);
}

void EditHistory::recordRemoved(TakenRecords removed, const QString& what)
{
    if (removed.empty())
        return;
    push(std::make_unique<RecordsCommand>(what, std::move(removed), m_doc, appendMark(m_doc)));
}

void EditHistory::recolorSelection(ColorRGB colour, Gesture gesture)
{
    auto step = std::make_unique<RecolorCommand>(m_doc, colour);
    if (!step->changesAny())
        return;
    step->redo(m_doc, 0);
    push(std::move(step), gesture);
}

bool EditHistory::layerModified(int layer) const
{
    return m_state[std::size_t(layer)] != m_doc.homes[std::size_t(layer)].savedState;
}

void EditHistory::markSaved(int layer)
{
    m_doc.homes[std::size_t(layer)].savedState = m_state[std::size_t(layer)];
}

void EditHistory::enter(EditCommand& command, unsigned oldMask)
{
    const unsigned mask = command.layerMask();
    for (std::size_t layer = 0; layer < std::size_t(kLayerCount); ++layer) {
        const unsigned bit = 1u << layer;
        if (!(mask & bit))
            continue;
        if (!(oldMask & bit))
            command.m_before[layer] = m_state[layer];
        command.m_after[layer] = m_nextState++;
        m_state[layer] = command.m_after[layer];
    }
}

void EditHistory::undo(float scale)
{
    m_open = false;
    if (!canUndo())
        return;
    EditCommand& command = *m_steps[m_index - 1];
    if (!command.fits(m_doc, true)) {
        clear();
        return;
    }
    const std::size_t oldBytes = command.bytes();
    command.undo(m_doc, scale);
    m_bytes = m_bytes - oldBytes + command.bytes();
    const unsigned mask = command.layerMask();
    for (std::size_t layer = 0; layer < std::size_t(kLayerCount); ++layer) {
        if (mask & (1u << layer))
            m_state[layer] = command.m_before[layer];
    }
    --m_index;
}

void EditHistory::redo(float scale)
{
    m_open = false;
    if (!canRedo())
        return;
    EditCommand& command = *m_steps[m_index];
    if (!command.fits(m_doc, false)) {
        clear();
        return;
    }
    const std::size_t oldBytes = command.bytes();
    command.redo(m_doc, scale);
    m_bytes = m_bytes - oldBytes + command.bytes();
    const unsigned mask = command.layerMask();
    for (std::size_t layer = 0; layer < std::size_t(kLayerCount); ++layer) {
        if (mask & (1u << layer))
            m_state[layer] = command.m_after[layer];
    }
    ++m_index;
}

void EditHistory::clear()
{
    m_steps.clear();
    m_index = 0;
    m_bytes = 0;
    m_open = false;
}

void EditHistory::setByteLimit(std::size_t bytes)
{
    m_byteLimit = bytes;
    trim();
}

void EditHistory::trim()
{
    // The oldest steps go first; when only steps to redo are left, the one
    // furthest from the present goes. Undoing and redoing only move records
    // between the document and the steps, so the bound is kept when steps
    // are added.
    while (m_bytes > m_byteLimit && !m_steps.empty()) {
        if (m_index > 0) {
            m_bytes -= m_steps.front()->bytes();
            m_steps.pop_front();
            --m_index;
        } else {
            m_bytes -= m_steps.back()->bytes();
            m_steps.pop_back();
        }
    }
    if (m_steps.empty())
        m_open = false;
}

} // namespace plotwell
