#include "tools/deletion.h"

#include "editor/drawlines.h"
#include "editor/editor.h"

namespace plotwell {

bool deleteSelected(MapDocument& doc)
{
    return doc.removeRecordsWhere([](std::int16_t, bool selected) { return selected; });
}

void removeLastLine(Editor& editor)
{
    editor.doc.removeLastLine();
    drawLines(editor);
}

void removeLastLabel(Editor& editor)
{
    editor.doc.removeLastLabel();
    drawLines(editor);
}

void deleteKey(Editor& editor, int shift)
{
    if (deleteSelected(editor.doc))
        return;
    if (shift == kShiftMask)
        removeLastLabel(editor);
    else
        removeLastLine(editor);
}

} // namespace plotwell
