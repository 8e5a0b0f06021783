#pragma once

#include "platform/dialogs.h"
#include "platform/filedialog.h"

#include <QFileDialog>
#include <QPointer>
#include <QWidget>

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

// QMessageBox with only OK, QInputDialog for a line of text.
class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(QWidget* parent) : m_parent(parent) {}

    void message(const QString& text, const QString& title) override;
    QString prompt(const QString& message, const QString& title, const QString& defaultText) override;

private:
    QPointer<QWidget> m_parent;
};

} // namespace plotwell
