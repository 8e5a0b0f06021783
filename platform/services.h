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

// What the editor needs of the outside world. The window passes the Qt
// implementations; tests pass scripted fakes.
struct Services {
    DrawingSurface& surface;
    FileDialog& fileDialog;
    Dialogs& dialogs;
    SettingsStore& settings;
    EventPump& events;
    Clipboard& clipboard;
};

} // namespace plotwell
