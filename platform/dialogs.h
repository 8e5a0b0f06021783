#pragma once

#include <QString>

namespace plotwell {

// Modal message box and text prompt.
class Dialogs {
public:
    virtual ~Dialogs() = default;

    // A message box with only an OK button; an empty title means the program's title.
    virtual void message(const QString& text, const QString& title = QString()) = 0;
    // A one-line text prompt; the answer, or an empty text when cancelled.
    virtual QString prompt(const QString& message, const QString& title, const QString& defaultText) = 0;
};

} // namespace plotwell
