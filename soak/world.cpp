#include "soak/world.h"

#include "editor/shutdown.h"
#include "soak/files.h"

#include <QDir>

namespace plotwell::soak {

World::World(const QString& folder, Machine& machine)
    : folder(folder), machine(machine), surface(6795, 7155), editor(on(surface, machine.settings)),
      recovery(machine.recoveryPlace)
{
    fileDialog.from = &answers;
    fileDialog.choose = [this](const QString& recipe) { return makeFile(this->folder, recipe); };
    dialogs.from = &answers;
    // Label Properties takes "ok" or a cancel, then the text, the size's
    // place in the list as typed and the height, each as it comes (hostile or not).
    dialogs.answerLabel = [this](LabelDialogFields& fields) {
        if (test::nextAnswer(answers) != QStringLiteral("ok"))
            return false;
        fields.text = test::nextAnswer(answers);
        fields.sizeChoice = test::nextAnswer(answers).toInt();
        fields.z = test::nextAnswer(answers);
        return true;
    };
    launcher.folder = folder;
    launcher.viewerFound = false;
    pictureDialog.accept = false;
    progress.onReport = [this](int report) {
        if (report == endAt) {
            endAt = 0;
            closeWindow();
        }
    };
    editor.focusMap = [this] { ++focusRequests; };
}

void World::closeWindow()
{
    requestClose(editor.shell);
    for (int tick = 0; tick < 3 && !editor.shell.ended; ++tick)
        endTimerTick(editor.shell);
}

} // namespace plotwell::soak
