#pragma once

#include "platform/IniFileSettingsStore.h"

#include <QTemporaryDir>

namespace qf::preview {

// The real settings store over an empty temporary folder: a page restores its
// default values exactly as from a player's fresh store (the real store's
// refusals included), and the user's own store is never read or written.
class ScratchSettingsStore : public SettingsStore {
public:
    void saveValue(const QString& application, const QString& section, const QString& key,
                   const QString& value) override
    {
        m_store.saveValue(application, section, key, value);
    }
    QString readValue(const QString& application, const QString& section, const QString& key,
                      const QString& defaultValue) const override
    {
        return m_store.readValue(application, section, key, defaultValue);
    }
    void sync() override { m_store.sync(); }

private:
    QTemporaryDir m_folder;
    IniFileSettingsStore m_store{m_folder.path()};
};

} // namespace qf::preview
