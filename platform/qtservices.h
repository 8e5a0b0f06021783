#pragma once

#include "platform/services.h"

namespace plotwell {

class QtEventPump : public EventPump {
public:
    void processEvents() override;
};

class QtClipboard : public Clipboard {
public:
    void setText(const QString& text) override;
};

// The program's folder from Qt; documents open with QDesktopServices, or
// with notepad.exe on Windows.
class QtLauncher : public Launcher {
public:
    QString programFolder() const override;
    bool openDocument(const QString& path) override;
};

// The user's decimal separator, for captions in the locale's ordinary number form.
char systemDecimalSeparator();

} // namespace plotwell
