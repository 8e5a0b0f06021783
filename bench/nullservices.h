#pragma once

#include "platform/services.h"

namespace plotwell::bench {

// Services for a benchmark editor: no dialog is ever answered, nothing leaves
// the process.
class NullFileDialog : public FileDialog {
public:
    bool showOpen() override { return false; }
    bool showSave() override { return false; }
};

class NullDialogs : public Dialogs {
public:
    void message(const QString&, const QString&) override {}
    QString prompt(const QString&, const QString&, const QString&) override { return {}; }
};

class NullEventPump : public EventPump {
public:
    void processEvents() override {}
};

class NullClipboard : public Clipboard {
public:
    void setText(const QString&) override {}
};

class NullLauncher : public Launcher {
public:
    QString programFolder() const override { return {}; }
    bool openDocument(const QString&) override { return false; }
};

} // namespace plotwell::bench
