#include <gtest/gtest.h>
#include <QApplication>

int main(int argc, char** argv)
{
    // A screen of 144 dots per inch.
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" ZN_SOURCE_DIR "/tests/addin/libraries/lexmgr/screen.json");
    QApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
