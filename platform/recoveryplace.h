#pragma once

#include <QElapsedTimer>
#include <QString>

namespace plotwell {

// Where recovery copies of unsaved layers are kept, and a clock to time them
// by. Tests give a temporary folder and a clock they move themselves.
class RecoveryPlace {
public:
    virtual ~RecoveryPlace() = default;
    // The folder that holds the copies; it need not exist yet.
    virtual QString folder() const = 0;
    // Milliseconds from some fixed moment, never going back.
    virtual qint64 msecsNow() const = 0;
};

// The "recovery" folder in the user's data folder for this program, and the
// system's steady clock.
class QtRecoveryPlace : public RecoveryPlace {
public:
    QtRecoveryPlace();
    QString folder() const override;
    qint64 msecsNow() const override { return m_clock.elapsed(); }

private:
    QElapsedTimer m_clock;
};

} // namespace plotwell
