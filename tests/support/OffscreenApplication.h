#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <QApplication>

/// Gives the tests of a program the toolkit's application object, on the platform without a screen. To be included in
/// any of the program's files.
namespace zn::test {

class OffscreenApplication : public ::testing::Environment {
public:
    void SetUp() override
    {
        if (qApp)
            return;
        qputenv("QT_QPA_PLATFORM", "offscreen");
        m_application = std::make_unique<QApplication>(m_count, m_arguments);
    }
    void TearDown() override { m_application.reset(); }

private:
    char m_name[5] = "test";
    char* m_arguments[2] = {m_name, nullptr};
    int m_count = 1;
    std::unique_ptr<QApplication> m_application;
};

inline ::testing::Environment* const offscreenApplication
    = ::testing::AddGlobalTestEnvironment(new OffscreenApplication);

} // namespace zn::test
