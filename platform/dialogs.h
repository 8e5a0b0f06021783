#pragma once

#include <QString>
#include <QStringList>

namespace plotwell {

// What the Label Properties dialog shows, and the user's answer in it.
struct LabelDialogFields {
    QString text;
    // The size codes offered, with what each is called, and the one chosen
    // (an index into them).
    QStringList sizeNames;
    int sizeChoice = 0;
    // The height, as typed.
    QString z;
};

// Modal message box, text prompt and the label's properties.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    // A message box with only an OK button; an empty title means the program's title.
    virtual void message(const QString& text, const QString& title = QString()) = 0;
    // A one-line text prompt; the answer, or an empty text when cancelled.
    virtual QString prompt(const QString& message, const QString& title, const QString& defaultText) = 0;
    // The Label Properties dialog, filled from fields; true when the user
    // accepted it, fields then holding the answer.
    virtual bool labelProperties(LabelDialogFields& fields) = 0;
};

} // namespace plotwell
