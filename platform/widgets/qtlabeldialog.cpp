#include "platform/widgets/qtdialogs.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>

namespace plotwell {

bool QtDialogs::labelProperties(LabelDialogFields& fields)
{
    QDialog dialog(m_parent);
    dialog.setWindowTitle(QStringLiteral("Label Properties"));
    auto* text = new QLineEdit(fields.text, &dialog);
    // Room for a long label's text.
    text->setMinimumWidth(280);
    auto* size = new QComboBox(&dialog);
    size->addItems(fields.sizeNames);
    size->setCurrentIndex(fields.sizeChoice);
    auto* z = new QLineEdit(fields.z, &dialog);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    auto* form = new QFormLayout(&dialog);
    form->addRow(QStringLiteral("Text:"), text);
    form->addRow(QStringLiteral("Size:"), size);
    form->addRow(QStringLiteral("Height (z):"), z);
    form->addRow(buttons);
    text->selectAll();
    if (dialog.exec() != QDialog::Accepted)
        return false;
    fields.text = text->text();
    fields.sizeChoice = size->currentIndex();
    fields.z = z->text();
    return true;
}

} // namespace plotwell
