#include "support/IsolatedUserFolders.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const IsolatedUserFolders folders;
    if (!folders.isValid())
        return 2;
    setenv("QT_QPA_PLATFORM", "offscreen", 0); // unless one was chosen
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
