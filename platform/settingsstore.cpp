#include "platform/settingsstore.h"

#include <QSettings>

namespace plotwell {
namespace {

QSettings userSettings()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Plotwell"),
                     QStringLiteral("Plotwell"));
}

QString fullKey(const QString& section, const QString& key) { return section + QLatin1Char('/') + key; }

} // namespace

QString QtSettingsStore::get(const QString& section, const QString& key, const QString& defaultValue) const
{
    return userSettings().value(fullKey(section, key), defaultValue).toString();
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
