#include <gtest/gtest.h>
#include <QApplication>

#ifndef ZN_TEST_SCREEN
#define ZN_TEST_SCREEN "offscreen"
#endif

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", ZN_TEST_SCREEN);
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
