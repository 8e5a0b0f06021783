#pragma once

#include "platform/dialogs.h"
#include "platform/drawingsurface.h"
#include "platform/filedialog.h"
#include "platform/picturedialog.h"
#include "platform/settingsstore.h"

#include <functional>

namespace plotwell {

// Lets pending window events run from inside a handler.
class EventPump {
public:
    virtual ~EventPump() = default;
    virtual void processEvents() = 0;
};

class Clipboard {
public:
    virtual ~Clipboard() = default;
    virtual void setText(const QString& text) = 0;
};

// Starts other programs for the editor.
class Launcher {
public:
    virtual ~Launcher() = default;
    // The folder the program file lies in, without a trailing separator.
    virtual QString programFolder() const = 0;
    // Opens a file with the desktop's viewer for its kind; false when no
    // viewer could be started.
    virtual bool openDocument(const QString& path) = 0;
};

// Shows how far a long task has come and lets the user cancel it. Nothing
// shows for a task that ends within about half a second.
class Progress {
public:
    virtual ~Progress() = default;
    virtual void begin(const QString& label) = 0;
    // done of total (total -1 when not known); false once the user cancelled.
    virtual bool advance(qint64 done, qint64 total) = 0;
    virtual void end() = 0;
};

// What the editor needs of the outside world. The window passes the Qt
// implementations; tests pass scripted fakes.
struct Services {
    DrawingSurface& surface;
    FileDialog& fileDialog;
    Dialogs& dialogs;
    SettingsStore& settings;
    EventPump& events;
    Clipboard& clipboard;
    Launcher& launcher;
    Progress& progress;
    PictureDialog& pictureDialog;
};

} // namespace plotwell
