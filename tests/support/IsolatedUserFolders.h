#pragma once

#include <QTemporaryDir>

#include <cstdlib>

// Points the user's configuration, data and cache folders into a temporary folder for
// the whole test run, so no test reads or writes the user's own settings.
class IsolatedUserFolders {
public:
    IsolatedUserFolders()
    {
        setenv("XDG_CONFIG_HOME", qPrintable(m_home.filePath(QStringLiteral("config"))), 1);
        setenv("XDG_DATA_HOME", qPrintable(m_home.filePath(QStringLiteral("data"))), 1);
        setenv("XDG_CACHE_HOME", qPrintable(m_home.filePath(QStringLiteral("cache"))), 1);
    }
    bool isValid() const { return m_home.isValid(); }

private:
    QTemporaryDir m_home;
};
