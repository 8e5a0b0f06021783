#pragma once

#include "platform/services.h"

namespace plotwell {

class QtEventPump : public EventPump {
public:
    void processEvents() override;
};

class QtClipboard : public Clipboard {
public:
    void setText(const QString& text) override;
};

// The user's decimal separator, for captions in the locale's ordinary number form.
char systemDecimalSeparator();

} // namespace plotwell
