#pragma once

// The one set of stand-ins for the program's services that the tests, the
// soak and the benchmarks share: dialogs that answer from a script, a
// clipboard in memory, a launcher that starts nothing, a recovery folder with
// a clock that only its user moves. None of them reaches the user's screen,
// settings or files.

#include "platform/picturedialog.h"
#include "platform/recoveryplace.h"
#include "platform/services.h"
#include "platform/settingsstore.h"

#include <QStringList>

#include <deque>
#include <functional>
#include <vector>

namespace plotwell::test {

// The user's answers, taken one at a time; none left is a cancel.
using Answers = std::deque<QString>;

inline QString nextAnswer(Answers& answers)
{
    if (answers.empty())
        return {};
    QString next = answers.front();
    answers.pop_front();
    return next;
}

// A file dialog that answers from a script: each show takes the next answer;
// an empty answer (or none left) is a cancel. `choose`, when set, turns an
// answer into the file chosen (empty: cancel), as the soak does to make the
// file first.
class ScriptedFileDialog : public FileDialog {
public:
    Answers answers;
    Answers* from = &answers; // where the answers come from: its own, or a queue it shares
    std::function<QString(const QString&)> choose;
    QStringList shownFolders; // initialFolder at each show
    QStringList shownFilters;
    QStringList chosenFiles; // the file of each show that was not cancelled
    int opens = 0;
    int saves = 0;

    bool showOpen() override
    {
        ++opens;
        return answer();
    }
    bool showSave() override
    {
        ++saves;
        return answer();
    }

private:
    bool answer()
    {
        shownFolders << initialFolder;
        shownFilters << filter;
        const QString next = nextAnswer(*from);
        const QString chosen = next.isEmpty() || !choose ? next : choose(next);
        if (chosen.isEmpty())
            return false;
        fileName = chosen;
        chosenFiles << chosen;
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
    Answers answers;
    Answers* from = &answers;

    void message(const QString& text, const QString& title) override { messages.push_back({text, title, {}}); }
    QString prompt(const QString& message, const QString& title, const QString& defaultText) override
    {
        prompts.push_back({message, title, defaultText});
        return nextAnswer(*from);
    }
    // Label Properties: each showing takes the next answer (none left is a
    // cancel), or asks `answerLabel` when that is set.
    std::vector<LabelDialogFields> labelShown;
    std::deque<LabelDialogFields> labelAnswers;
    std::function<bool(LabelDialogFields&)> answerLabel;
    bool labelProperties(LabelDialogFields& fields) override
    {
        labelShown.push_back(fields);
        if (answerLabel)
            return answerLabel(fields);
        if (labelAnswers.empty())
            return false;
        fields = labelAnswers.front();
        labelAnswers.pop_front();
        return true;
    }
};

// Counts the times events may run; runs `during` each time, and `once` the
// first time after it was set.
class CountingEventPump : public EventPump {
public:
    int calls = 0;
    std::function<void()> during;
    std::function<void()> once;
    void processEvents() override
    {
        ++calls;
        if (during)
            during();
        if (once) {
            const auto run = std::move(once);
            once = nullptr;
            run();
        }
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

// Counts progress reports; cancels at the given report of a load (0: never).
// `onReport`, when set, hears the number of each report within its load.
class ScriptedProgress : public Progress {
public:
    int cancelAt = 0;
    int reports = 0; // of the load under way
    int begun = 0;
    int ended = 0;
    std::function<void(int)> onReport;
    void begin(const QString&) override
    {
        ++begun;
        reports = 0;
    }
    bool advance(qint64, qint64) override
    {
        ++reports;
        if (onReport)
            onReport(reports);
        return reports != cancelAt;
    }
    void end() override { ++ended; }
};

// The export dialog answers with its options as its user set them, or cancels.
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

// A recovery folder that its user names, and a clock that only its user moves.
class FakeRecoveryPlace : public RecoveryPlace {
public:
    explicit FakeRecoveryPlace(QString folder = {}) : path(std::move(folder)) {}
    QString path;
    qint64 now = 0;
    QString folder() const override { return path; }
    qint64 msecsNow() const override { return now; }
};

// The fakes of every service but the drawing surface and the settings.
struct FakeServices {
    ScriptedFileDialog fileDialog;
    ScriptedDialogs dialogs;
    CountingEventPump events;
    MemoryClipboard clipboard;
    RecordingLauncher launcher;
    ScriptedProgress progress;
    ScriptedPictureDialog pictureDialog;

    Services on(DrawingSurface& surface, SettingsStore& settings)
    {
        return Services{surface, fileDialog, dialogs, settings, events, clipboard, launcher, progress, pictureDialog};
    }
};

} // namespace plotwell::test
