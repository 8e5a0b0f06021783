#include "platform/recoveryplace.h"

#include <QStandardPaths>

namespace plotwell {

QtRecoveryPlace::QtRecoveryPlace()
{
    m_clock.start();
}

QString QtRecoveryPlace::folder() const
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/recovery");
}

} // namespace plotwell
