#pragma once

#include "bench/mapgen.h"
#include "document/mapreader.h"
#include "editor/editor.h"
#include "platform/qimagesurface.h"
#include "platform/services.h"

#include <QBuffer>

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
    bool labelProperties(LabelDialogFields&) override { return false; }
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

class NullProgress : public Progress {
public:
    void begin(const QString&) override {}
    bool advance(qint64, qint64) override { return true; }
    void end() override {}
};

class NullPictureDialog : public PictureDialog {
public:
    bool show(QSize, bool) override { return false; }
};

// An editor on a real image surface of the given logical pixels, at this
// many device pixels to one, with a generated map loaded, reaching nothing
// outside the process.
struct BenchEditor {
    BenchEditor(int width, int height, std::size_t lines, std::size_t labels, double ratio = 1)
        : surface(float(width) * 15, float(height) * 15, ratio),
          editor(Services{surface, fileDialog, dialogs, settings, events, clipboard, launcher, progress, pictureDialog})
    {
        editor.view.mapWidth = surface.width();
        editor.view.mapHeight = surface.height();
        QByteArray text = QByteArray::fromStdString(generateMapText(lines, labels));
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        readMapRecords(buffer, editor.doc, 0, editor.view.currentScale);
    }

    QImageSurface surface;
    NullFileDialog fileDialog;
    NullDialogs dialogs;
    MemorySettingsStore settings;
    NullEventPump events;
    NullClipboard clipboard;
    NullLauncher launcher;
    NullProgress progress;
    NullPictureDialog pictureDialog;
    Editor editor;
};

} // namespace plotwell::bench
