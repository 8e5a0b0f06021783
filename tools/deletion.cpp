#include "tools/deletion.h"

#include "editor/drawlines.h"
#include "editor/editor.h"
#include "editor/edits.h"

namespace plotwell {

namespace {

const QString kDelete = QStringLiteral("Delete");

} // namespace

bool deleteSelected(Editor& editor)
{
    TakenRecords removed = editor.doc.takeRecordsWhere([](std::int16_t, bool selected) { return selected; });
    const bool any = !removed.empty();
    editor.history.recordRemoved(std::move(removed), kDelete);
    return any;
}

void removeLastLine(Editor& editor)
{
    MapDocument& doc = editor.doc;
    if (doc.lineCount() > 0)
        editor.history.recordRemoved(doc.takeRecordsFrom(doc.lineCount() - 1, doc.labelCount()), kDelete);
    drawLines(editor);
}

void removeLastLabel(Editor& editor)
{
    MapDocument& doc = editor.doc;
    if (doc.labelCount() > 0)
        editor.history.recordRemoved(doc.takeRecordsFrom(doc.lineCount(), doc.labelCount() - 1), kDelete);
    drawLines(editor);
}

void deleteKey(Editor& editor, int shift)
{
    if (deleteSelected(editor))
        return;
    if (shift == kShiftMask)
        removeLastLabel(editor);
    else
        removeLastLine(editor);
}

} // namespace plotwell
