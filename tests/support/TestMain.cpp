#include "support/IsolatedUserFolders.h"

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    const IsolatedUserFolders folders;
    if (!folders.isValid())
        return 2;
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
