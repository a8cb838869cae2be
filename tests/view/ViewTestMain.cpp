#include "support/IsolatedUserFolders.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const IsolatedUserFolders folders;
    if (!folders.isValid())
        return 2;
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
