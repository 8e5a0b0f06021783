#include "soak/world.h"

#include "editor/shutdown.h"
#include "soak/files.h"

#include <QDir>

namespace plotwell::soak {

bool SoakFileDialog::show()
{
    const QString recipe = m_answers.next();
    if (recipe.isEmpty())
        return false;
    fileName = makeFile(m_folder, recipe);
    chosen = fileName;
    return !fileName.isEmpty();
}

World::World(const QString& folder, Machine& machine)
    : folder(folder), machine(machine), surface(6795, 7155), fileDialog(answers, folder), dialogs(answers),
      settings(machine.settings), launcher(folder),
      editor(Services{surface, fileDialog, dialogs, settings, events, clipboard, launcher, progress, pictureDialog}),
      recovery(machine.recoveryPlace)
{
    editor.focusMap = [this] { ++focusRequests; };
    progress.endTimer = [this] { closeWindow(); };
}

void World::closeWindow()
{
    requestClose(editor.shell);
    for (int tick = 0; tick < 3 && !editor.shell.ended; ++tick)
        endTimerTick(editor.shell);
}

} // namespace plotwell::soak
