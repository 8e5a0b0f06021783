#pragma once

#include "platform/services.h"
#include "editor/editor.h"
#include "tests/support/qtprinters.h"
#include "tests/support/recordingsurface.h"

#include <QStringList>

#include <deque>
#include <functional>

namespace plotwell::test {

// A file dialog that answers from a script: each show takes the next answer;
// an empty answer (or none left) is a cancel.
class ScriptedFileDialog : public FileDialog {
public:
    std::deque<QString> answers;
    QStringList shownFolders; // initialFolder at each show
    QStringList shownFilters;
    int opens = 0;
    int saves = 0;

    bool showOpen() override { ++opens; return answer(); }
    bool showSave() override { ++saves; return answer(); }

private:
    bool answer()
    {
        shownFolders << initialFolder;
        shownFilters << filter;
        if (answers.empty())
            return false;
        const QString next = answers.front();
        answers.pop_front();
        if (next.isEmpty())
            return false;
        fileName = next;
        return true;
    }
};

// Message boxes are recorded; prompts answer from a script (empty = cancel).
class ScriptedDialogs : public Dialogs {
public:
    struct Shown {
        QString text;
        QString title;
        QString defaultText;
    };
    std::vector<Shown> messages;
    std::vector<Shown> prompts;
    std::deque<QString> answers;

    void message(const QString& text, const QString& title) override { messages.push_back({text, title, {}}); }
    QString prompt(const QString& message, const QString& title, const QString& defaultText) override
    {
        prompts.push_back({message, title, defaultText});
        if (answers.empty())
            return {};
        const QString next = answers.front();
        answers.pop_front();
        return next;
    }
    // Label Properties: each showing takes the next answer; none left is a cancel.
    std::vector<LabelDialogFields> labelShown;
    std::deque<LabelDialogFields> labelAnswers;
    bool labelProperties(LabelDialogFields& fields) override
    {
        labelShown.push_back(fields);
        if (labelAnswers.empty())
            return false;
        fields = labelAnswers.front();
        labelAnswers.pop_front();
        return true;
    }
};

// Counts the times events may run, and runs what the test gives as events.
class CountingEventPump : public EventPump {
public:
    int calls = 0;
    std::function<void()> during;
    void processEvents() override
    {
        ++calls;
        if (during)
            during();
    }
};

class MemoryClipboard : public Clipboard {
public:
    QString text;
    void setText(const QString& t) override { text = t; }
};

// Opens nothing; records what it was asked to open.
class RecordingLauncher : public Launcher {
public:
    QString folder = QStringLiteral("/opt/plotwell/bin");
    QStringList opened;
    bool viewerFound = true;
    QString programFolder() const override { return folder; }
    bool openDocument(const QString& path) override
    {
        opened << path;
        return viewerFound;
    }
};

// Counts progress reports; cancels at the given report (0: never).
class ScriptedProgress : public Progress {
public:
    int cancelAt = 0;
    int reports = 0;
    int begun = 0;
    int ended = 0;
    void begin(const QString&) override { ++begun; }
    bool advance(qint64, qint64) override { return ++reports != cancelAt; }
    void end() override { ++ended; }
};

// The export dialog answers with its options as a test set them, or cancels.
class ScriptedPictureDialog : public PictureDialog {
public:
    bool accept = true;
    int shown = 0;
    bool underlayOffered = false;
    bool show(QSize, bool underlayShown) override
    {
        ++shown;
        underlayOffered = underlayShown;
        return accept;
    }
};

// The fakes of every service but the drawing surface.
struct FakeServices {
    ScriptedFileDialog fileDialog;
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    CountingEventPump events;
    MemoryClipboard clipboard;
    RecordingLauncher launcher;
    ScriptedProgress progress;
    ScriptedPictureDialog pictureDialog;
};

// An editor wired to fakes, drawing on the given surface and sized to it.
struct EditorOn : FakeServices {
    explicit EditorOn(DrawingSurface& surface) : editor(Services{surface, fileDialog, dialogs, settings, events, clipboard, launcher, progress, pictureDialog})
    {
        editor.view.mapWidth = surface.width();
        editor.view.mapHeight = surface.height();
    }
    Editor editor;
};

struct RecordingHolder {
    RecordingSurface surface;
};

// An editor on a recording surface: nothing reaches the user's settings, clipboard or screen.
struct FakeWorld : RecordingHolder, EditorOn {
    FakeWorld() : EditorOn(surface) {}
};

} // namespace plotwell::test
