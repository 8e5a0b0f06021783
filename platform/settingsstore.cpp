#include "platform/settingsstore.h"

#include <QSettings>

namespace plotwell {
namespace {

QSettings userSettings()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Plotwell"),
                     QStringLiteral("Plotwell"));
}

QString fullKey(const QString& section, const QString& key)
{
    return section + QLatin1Char('/') + key;
}

} // namespace

QString QtSettingsStore::get(const QString& section, const QString& key, const QString& defaultValue) const
{
    const QVariant value = userSettings().value(fullKey(section, key));
    if (!value.isValid())
        return defaultValue;
    // A value written by hand without quotes, such as 255,0,0, reads as a list.
    if (value.typeId() == QMetaType::QStringList)
        return value.toStringList().join(QLatin1Char(','));
    return value.toString();
}

void QtSettingsStore::save(const QString& section, const QString& key, const QString& value)
{
    userSettings().setValue(fullKey(section, key), value);
}

QString MemorySettingsStore::get(const QString& section, const QString& key, const QString& defaultValue) const
{
    const auto it = m_values.find(fullKey(section, key));
    return it == m_values.end() ? defaultValue : it->second;
}

void MemorySettingsStore::save(const QString& section, const QString& key, const QString& value)
{
    m_values[fullKey(section, key)] = value;
}

} // namespace plotwell
