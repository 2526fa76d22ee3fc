#include "tests/support/windows/Outline.h"
#include "tests/support/windows/Windows.h"

#include <gtest/gtest.h>
#include <QLabel>
#include <QTest>

namespace zn::test {
namespace {

/// When the editor has looked at its macro.
bool isChecked(const QWidget& window)
{
    const auto* status = window.findChild<QLabel*>("macroStatus");
    return !status || !status->text().endsWith("...");
}

class OutlineTest : public ::testing::TestWithParam<WindowCase> { };

TEST_P(OutlineTest, ShowsWhatItsFileTells)
{
    std::string outlines;
    for (const char16_t* language : {u"GB", u"DE"}) {
        Desk desk(language);
        GetParam().open(desk, [&](QWidget& shown) {
            EXPECT_TRUE(QTest::qWaitFor([&shown] { return isChecked(shown); }));
            outlines += outlineOf(shown) + '\n';
        });
    }
    expectOutline(
        outlines, std::filesystem::path(ZN_SOURCE_DIR "/tests/addin/pages/look/outlines") / (GetParam().name + ".txt"));
}

INSTANTIATE_TEST_SUITE_P(Windows, OutlineTest, ::testing::ValuesIn(allWindows()), testName);

} // namespace
} // namespace zn::test
