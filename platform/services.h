#pragma once

#include "platform/dialogs.h"
#include "platform/drawingsurface.h"
#include "platform/filedialog.h"
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
};

} // namespace plotwell
