#include "tests/support/VirtualDisplay.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <QApplication>

/// On an X server of the program's own.
int main(int argc, char** argv)
{
    const zn::test::VirtualDisplay display;
    if (!display.isThere()) {
        std::fprintf(stderr, "Xvfb can't be started; install the package xvfb.\n");
        return 1;
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
