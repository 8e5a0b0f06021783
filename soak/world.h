#pragma once

#include "editor/editor.h"
#include "editor/renderloop.h"
#include "platform/qimagesurface.h"
#include "platform/picturedialog.h"
#include "platform/services.h"
#include "platform/settingsstore.h"

#include <QString>

#include <deque>
#include <functional>

namespace plotwell::soak {

class World;

// The answers of the user for the step being run: every prompt, and every
// open or save dialog, takes the next one. A file dialog's answer is a file
// recipe (see files.h), which the dialog turns into a real file or folder in
// the run's own folder; an empty answer, or none left, is a cancel.
struct Answers {
    std::deque<QString> queue;
    QString next()
    {
        if (queue.empty())
            return {};
        QString answer = queue.front();
        queue.pop_front();
        return answer;
    }
};

class SoakFileDialog : public FileDialog {
public:
    SoakFileDialog(Answers& answers, const QString& folder) : m_answers(answers), m_folder(folder) {}
    bool showOpen() override { return show(); }
    bool showSave() override { return show(); }

private:
    bool show();
    Answers& m_answers;
    QString m_folder;
};

class SoakDialogs : public Dialogs {
public:
    explicit SoakDialogs(Answers& answers) : m_answers(answers) {}
    void message(const QString&, const QString&) override { ++messages; }
    QString prompt(const QString&, const QString&, const QString&) override { return m_answers.next(); }
    int messages = 0;

private:
    Answers& m_answers;
};

// Lets "pending events" run: the step that waits to run nested, if any.
class SoakEventPump : public EventPump {
public:
    std::function<void()> pending;
    void processEvents() override
    {
        if (!pending)
            return;
        const auto run = std::move(pending);
        pending = nullptr;
        run();
    }
};

class SoakClipboard : public Clipboard {
public:
    void setText(const QString& t) override { text = t; }
    QString text;
};

// The program's folder is the run's folder; nothing is ever started.
class SoakLauncher : public Launcher {
public:
    explicit SoakLauncher(const QString& folder) : m_folder(folder) {}
    QString programFolder() const override { return m_folder; }
    bool openDocument(const QString&) override { return false; }

private:
    QString m_folder;
};

// The export dialog: cancelled unless a step has set what to answer.
class SoakPictureDialog : public PictureDialog {
public:
    bool accept = false;
    bool show(QSize, bool) override { return accept; }
};

// Cancels a load at the given report (0: never).
class SoakProgress : public Progress {
public:
    int cancelAt = 0;
    void begin(const QString&) override { m_reports = 0; }
    bool advance(qint64, qint64) override { return ++m_reports != cancelAt; }
    void end() override {}

private:
    int m_reports = 0;
};

// An editor as the window holds it, with services that answer as the steps
// say and keep every file in one folder of the run's own. It draws on a real
// image surface, so that drawing is tried as the window does it.
class World {
public:
    explicit World(const QString& folder);

    const QString folder;
    Answers answers;
    QImageSurface surface;
    SoakFileDialog fileDialog;
    SoakDialogs dialogs;
    MemorySettingsStore settings;
    SoakEventPump events;
    SoakClipboard clipboard;
    SoakLauncher launcher;
    SoakProgress progress;
    SoakPictureDialog pictureDialog;
    Editor editor;
    RenderLoop loop;
    int focusRequests = 0;
};

} // namespace plotwell::soak
