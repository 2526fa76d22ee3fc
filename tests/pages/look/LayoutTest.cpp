#include "support/OffscreenApplication.h"
#include "support/windows/LayoutCheck.h"
#include "support/windows/LongTexts.h"
#include "support/windows/Windows.h"

#include <gmock/gmock.h>

namespace zn::test {
namespace {

using ::testing::IsEmpty;

/// The English texts of a window.
AskedTexts textsOf(const WindowCase& window)
{
    Desk desk;
    window.open(desk, [](QWidget&) {});
    return desk.asked;
}

void expectGoodLooks(const WindowCase& window, const Text& language, const std::filesystem::path& strings = {})
{
    Desk desk(language, strings);
    bool looked = false;
    window.open(desk, [&](QWidget& shown) {
        looked = true;
        EXPECT_THAT(layoutFaults(shown), IsEmpty()) << window.name << " in " << toUtf8(language);
    });
    EXPECT_TRUE(looked) << window.name << " did not open";
}

class LayoutTest : public ::testing::TestWithParam<WindowCase> { };

TEST_P(LayoutTest, ShowsEveryControlWholeInEnglishGermanAndWithLongTexts)
{
    const TemporaryFolder strings;
    writeLongTexts(textsOf(GetParam()), strings.path());
    expectGoodLooks(GetParam(), u"GB");
    expectGoodLooks(GetParam(), u"DE");
    expectGoodLooks(GetParam(), u"XX", strings.path());
}

TEST_P(LayoutTest, ShowsEveryControlWholeAtTwiceTheSize)
{
    const QFont font = QApplication::font();
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(large);
    expectGoodLooks(GetParam(), u"GB");
    expectGoodLooks(GetParam(), u"DE");
    QApplication::setFont(font);
}

TEST_P(LayoutTest, NamesEveryControl)
{
    Desk desk;
    GetParam().open(desk, [&](QWidget& shown) { EXPECT_THAT(namingFaults(shown), IsEmpty()) << GetParam().name; });
}

INSTANTIATE_TEST_SUITE_P(Windows, LayoutTest, ::testing::ValuesIn(allWindows()), [](const auto& window) {
    std::string name = window.param.name;
    std::erase_if(name, [](char letter) { return !std::isalnum(static_cast<unsigned char>(letter)); });
    return name;
});

} // namespace
} // namespace zn::test
