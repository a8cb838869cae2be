#pragma once

#include "platform/SettingsStore.h"

#include <QHash>

// Settings kept in memory only: the launcher parks a page's choices here
// while it builds the page anew in another language.
class MemorySettingsStore : public qf::SettingsStore {
public:
    void saveValue(const QString& application, const QString& section, const QString& key,
                   const QString& value) override
    {
        m_values.insert(address(application, section, key), value);
    }
    QString readValue(const QString& application, const QString& section, const QString& key,
                      const QString& defaultValue) const override
    {
        return m_values.value(address(application, section, key), defaultValue);
    }
    void sync() override {}

private:
    static QString address(const QString& application, const QString& section, const QString& key)
    {
        return application + QChar(0) + section + QChar(0) + key;
    }
    QHash<QString, QString> m_values;
};
