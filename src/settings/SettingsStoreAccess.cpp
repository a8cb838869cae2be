#include "control/qForms.h"

#include "platform/IniFileSettingsStore.h"

qf::SettingsStore& qForms::settingsStore()
{
    if (!m_settingsStore)
        m_settingsStore = std::make_shared<qf::IniFileSettingsStore>();
    return *m_settingsStore;
}

void qForms::setSettingsStore(std::shared_ptr<qf::SettingsStore> store)
{
    m_settingsStore = std::move(store);
}
