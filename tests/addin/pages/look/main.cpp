#include "tests/support/windows/Screen.h"

#include <gtest/gtest.h>
#include <QApplication>

int main(int argc, char** argv)
{
    zn::test::useOwnScreen();
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
