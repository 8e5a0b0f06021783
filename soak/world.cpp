#include "soak/world.h"

#include "soak/files.h"

#include <QDir>

namespace plotwell::soak {

bool SoakFileDialog::show()
{
    const QString recipe = m_answers.next();
    if (recipe.isEmpty())
        return false;
    fileName = makeFile(m_folder, recipe);
    return !fileName.isEmpty();
}

World::World(const QString& folder)
    : folder(folder), surface(6795, 7155), fileDialog(answers, folder), dialogs(answers), launcher(folder),
      editor(Services{surface, fileDialog, dialogs, settings, events, clipboard, launcher, progress, pictureDialog})
{
    editor.focusMap = [this] { ++focusRequests; };
}

} // namespace plotwell::soak
