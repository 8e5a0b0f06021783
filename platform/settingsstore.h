#pragma once

#include <QString>

#include <map>

namespace plotwell {

// The per-user settings of application "Plotwell", by section and key.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual QString get(const QString& section, const QString& key, const QString& defaultValue) const = 0;
    virtual void save(const QString& section, const QString& key, const QString& value) = 0;
};

// INI file in the user's configuration folder (organisation and application "Plotwell").
class QtSettingsStore : public SettingsStore {
public:
    QString get(const QString& section, const QString& key, const QString& defaultValue) const override;
    void save(const QString& section, const QString& key, const QString& value) override;
};

// Settings held in memory, for tests and tools that must not touch the user's.
class MemorySettingsStore : public SettingsStore {
public:
    QString get(const QString& section, const QString& key, const QString& defaultValue) const override;
    void save(const QString& section, const QString& key, const QString& value) override;

private:
    std::map<QString, QString> m_values;
};

} // namespace plotwell
