#pragma once

#include "platform/dialogs.h"
#include "platform/filedialog.h"
#include "platform/services.h"

#include <QFileDialog>
#include <QPointer>
#include <QProgressDialog>
#include <QWidget>

#include <memory>

namespace plotwell {

// The program's file dialog on QFileDialog. Remembers the folder it was last
// pointed at, so a dialog shown without a starting folder opens there.
class QtFileDialog : public FileDialog {
public:
    explicit QtFileDialog(QWidget* parent) : m_parent(parent) {}

    bool showOpen() override;
    bool showSave() override;

    // "Text files (*.txt)|*.txt|All Files(*.*)|*.*" as Qt writes filters.
    static QString toQtFilter(const QString& filter);

private:
    bool show(QFileDialog::AcceptMode mode);

    QPointer<QWidget> m_parent;
    QString m_lastFolder;
};

// A QProgressDialog, modal, that shows itself only for tasks that last.
class QtProgress : public Progress {
public:
    explicit QtProgress(QWidget* parent) : m_parent(parent) {}

    void begin(const QString& label) override;
    bool advance(qint64 done, qint64 total) override;
    void end() override;

private:
    QPointer<QWidget> m_parent;
    std::unique_ptr<QProgressDialog> m_dialog;
};

// QMessageBox with only OK, QInputDialog for a line of text, and a form for
// the label's properties.
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget* parent) : m_parent(parent) {}

    void message(const QString& text, const QString& title) override;
    QString prompt(const QString& message, const QString& title, const QString& defaultText) override;
    bool labelProperties(LabelDialogFields& fields) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace plotwell
