#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv)
{
    QTemporaryDir home;
    if (!home.isValid())
        return 2;
    setenv("XDG_CONFIG_HOME", qPrintable(home.filePath(QStringLiteral("config"))), 1);
    setenv("XDG_DATA_HOME", qPrintable(home.filePath(QStringLiteral("data"))), 1);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
