#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdlib>

// Every test run gets its own configuration and data folders, so no test ever
// reads or writes the user's own settings.
int main(int argc, char** argv)
{
    QTemporaryDir home;
    if (!home.isValid())
        return 2;
    setenv("XDG_CONFIG_HOME", qPrintable(home.filePath(QStringLiteral("config"))), 1);
    setenv("XDG_DATA_HOME", qPrintable(home.filePath(QStringLiteral("data"))), 1);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
