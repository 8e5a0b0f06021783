#pragma once

#include "editor/editor.h"
#include "editor/recovery.h"
#include "editor/renderloop.h"
#include "platform/qimagesurface.h"
#include "platform/settingsstore.h"
#include "testing/fakes.h"

#include <QSizeF>
#include <QString>

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace plotwell::soak {

class World;

// The answers of the user for the step being run: every prompt, and every
// open or save dialog, takes the next one. A file dialog's answer is a file
// recipe (see files.h), which the dialog turns into a real file or folder in
// the run's own folder; an empty answer, or none left, is a cancel.
using test::Answers;

// A layer with unsaved edits when the program ended: what recovering it
// must bring back.
struct LeftLayer {
    std::string text; // as saving writes it
    QString file;
};

// What outlives one run of the program: the user's settings, the recovery
// folder with its clock, and what the copies there must hold.
struct Machine {
    explicit Machine(const QString& recoveryFolder) : recoveryPlace(recoveryFolder) {}
    MemorySettingsStore settings;
    test::FakeRecoveryPlace recoveryPlace;
    std::map<int, LeftLayer> left; // by layer, from every run not recovered yet
};

// One run of the program: an editor as the window holds it, with services
// that answer as the steps say and keep every file in one folder of the
// run's own, and the keeper of recovery copies. It draws on a real image
// surface, so that drawing is tried as the window does it. Its progress
// dialog cancels a load at the report a step gives, and lets events run at
// each report; while it shows only the timers reach the program: the end
// timer fires at report endAt (0: never).
class World : public test::FakeServices {
public:
    World(const QString& folder, Machine& machine);

    // The window was closed: the shutdown timer ticks until the program has
    // ended, which it does once no handler runs (see Session::startAgain).
    void closeWindow();

    const QString folder;
    Machine& machine;
    Answers answers;
    QImageSurface surface;
    int endAt = 0;
    Editor editor;
    RenderLoop loop;
    RecoveryKeeper recovery;
    int focusRequests = 0;
    // The window size of the program started once this one has ended.
    QSizeF nextWindow{15000, 10000};
    // What a step found broken that only it can tell.
    std::optional<std::string> fault;
};

} // namespace plotwell::soak
