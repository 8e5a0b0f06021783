#pragma once

#include "editor/editor.h"
#include "editor/recovery.h"
#include "editor/renderloop.h"
#include "platform/qimagesurface.h"
#include "platform/picturedialog.h"
#include "platform/recoveryplace.h"
#include "platform/services.h"
#include "platform/settingsstore.h"

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
    // The path of the last file chosen.
    QString chosen;

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
    // Three answers: "ok" or a cancel, then the text, the size's place in the
    // list as typed and the height, each as it comes (hostile or not).
    bool labelProperties(LabelDialogFields& fields) override
    {
        if (m_answers.next() != QStringLiteral("ok"))
            return false;
        fields.text = m_answers.next();
        fields.sizeChoice = m_answers.next().toInt();
        fields.z = m_answers.next();
        return true;
    }
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

// The export dialog: cancelled unless a step has set what to answer, with
// the options the step has set.
class SoakPictureDialog : public PictureDialog {
public:
    bool accept = false;
    bool show(QSize, bool) override { return accept; }
};

// The folder the recovery copies are kept in, and the soak's own clock,
// which only the steps move.
class SoakRecoveryPlace : public RecoveryPlace {
public:
    explicit SoakRecoveryPlace(const QString& folder) : m_folder(folder) {}
    QString folder() const override { return m_folder; }
    qint64 msecsNow() const override { return now; }
    qint64 now = 0;

private:
    QString m_folder;
};

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
    SoakRecoveryPlace recoveryPlace;
    std::map<int, LeftLayer> left; // by layer, from every run not recovered yet
};

// Cancels a load at the given report (0: never). The window's progress
// dialog lets events run at each report, and while it shows only the
// timers reach the program: the end timer fires at report endAt (0: never).
class SoakProgress : public Progress {
public:
    int cancelAt = 0;
    int endAt = 0;
    std::function<void()> endTimer;
    void begin(const QString&) override { m_reports = 0; }
    bool advance(qint64, qint64) override
    {
        if (++m_reports == endAt) {
            endAt = 0;
            endTimer();
        }
        return m_reports != cancelAt;
    }
    void end() override {}

private:
    int m_reports = 0;
};

// One run of the program: an editor as the window holds it, with services
// that answer as the steps say and keep every file in one folder of the
// run's own, and the keeper of recovery copies. It draws on a real image
// surface, so that drawing is tried as the window does it.
class World {
public:
    World(const QString& folder, Machine& machine);

    // The window was closed: the shutdown timer ticks until the program has
    // ended, which it does once no handler runs (see Session::startAgain).
    void closeWindow();

    const QString folder;
    Machine& machine;
    Answers answers;
    QImageSurface surface;
    SoakFileDialog fileDialog;
    SoakDialogs dialogs;
    MemorySettingsStore& settings;
    SoakEventPump events;
    SoakClipboard clipboard;
    SoakLauncher launcher;
    SoakProgress progress;
    SoakPictureDialog pictureDialog;
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
