#include "editor/editmenu.h"

#include "editor/editor.h"
#include "editor/edits.h"
#include "tools/editselection.h"

namespace plotwell {
namespace {

const QString kSettings = QStringLiteral("settings");
const QString kSnapKey = QStringLiteral("snapToLineEnds");

} // namespace

void moveSelectionFromMenu(Editor& editor)
{
    moveSelectionFromPrompt(editor.toolContext());
    releaseHeldFrame(editor);
}

bool canEditLabelProperties(const Editor& editor)
{
    return soleSelectedLabel(editor.doc).has_value();
}

void labelPropertiesFromMenu(Editor& editor)
{
    if (const auto label = soleSelectedLabel(editor.doc))
        editLabelProperties(editor.toolContext(), *label);
    releaseHeldFrame(editor);
}

void toggleSnapToLineEnds(Editor& editor)
{
    ToolState& state = editor.tools.state;
    state.snapToEnds = !state.snapToEnds;
    state.marks.ringShown = false;
    editor.services.settings.save(kSettings, kSnapKey, state.snapToEnds ? QStringLiteral("1") : QStringLiteral("0"));
}

void loadEditSettings(Editor& editor)
{
    editor.tools.state.snapToEnds =
        editor.services.settings.get(kSettings, kSnapKey, QStringLiteral("0")) == QStringLiteral("1");
}

} // namespace plotwell
