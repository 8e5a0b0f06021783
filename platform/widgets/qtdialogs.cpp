#include "platform/widgets/qtdialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>

#include <algorithm>

namespace plotwell {

QString QtFileDialog::toQtFilter(const QString& filter)
{
    // Pairs of description and pattern; Qt takes only the descriptions,
    // which carry the pattern in parentheses.
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList entries;
    for (int i = 0; i + 1 < parts.size(); i += 2)
        entries << parts.at(i);
    return entries.join(QStringLiteral(";;"));
}

bool QtFileDialog::show(QFileDialog::AcceptMode mode)
{
    QString folder = initialFolder.isEmpty() ? m_lastFolder : initialFolder;
    if (folder.isEmpty())
        folder = QDir::currentPath();
    QFileDialog dialog(m_parent, QString(), folder, toQtFilter(filter));
    dialog.setAcceptMode(mode);
    // A typed name need not exist (opening it then fails as such), and
    // unless the command wants it no extension is added and an existing file
    // is not asked about.
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !confirmOverwrite);
    dialog.setDefaultSuffix(defaultSuffix);
    const QString name = QFileInfo(fileName).fileName();
    if (!name.isEmpty())
        dialog.selectFile(name);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return false; // cancelled
    const QString chosen = dialog.selectedFiles().constFirst();
    fileName = QDir::toNativeSeparators(chosen);
    m_lastFolder = QFileInfo(chosen).absolutePath();
    return true;
}

bool QtFileDialog::showOpen()
{
    return show(QFileDialog::AcceptOpen);
}

bool QtFileDialog::showSave()
{
    return show(QFileDialog::AcceptSave);
}

void QtProgress::begin(const QString& label)
{
    m_dialog = std::make_unique<QProgressDialog>(label, QStringLiteral("Cancel"), 0, 1000, m_parent);
    m_dialog->setWindowTitle(QStringLiteral("Plotwell"));
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setMinimumDuration(500);
    m_dialog->setAutoReset(false);
    m_dialog->setAutoClose(false);
    m_dialog->setValue(0);
}

bool QtProgress::advance(qint64 done, qint64 total)
{
    if (!m_dialog)
        return true;
    // Once shown, the dialog lets events run on each step, so the window
    // stays drawn and the Cancel button works.
    if (total > 0)
        m_dialog->setValue(int(std::min<qint64>(1000, done * 1000 / total)));
    else
        m_dialog->setValue(std::max(1, m_dialog->value()));
    return !m_dialog->wasCanceled();
}

void QtProgress::end()
{
    m_dialog.reset();
}

void QtDialogs::message(const QString& text, const QString& title)
{
    QMessageBox::information(m_parent, title.isEmpty() ? QStringLiteral("Plotwell") : title, text, QMessageBox::Ok);
}

QString QtDialogs::prompt(const QString& message, const QString& title, const QString& defaultText)
{
    bool ok = false;
    const QString answer = QInputDialog::getText(m_parent, title.isEmpty() ? QStringLiteral("Plotwell") : title,
                                                 message, QLineEdit::Normal, defaultText, &ok);
    return ok ? answer : QString();
}

} // namespace plotwell
