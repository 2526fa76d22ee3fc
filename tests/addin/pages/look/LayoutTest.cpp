#include "tests/support/windows/LayoutCheck.h"
#include "tests/support/windows/Windows.h"

#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <QApplication>
#include <QImage>

namespace zn::test {
namespace {

using ::testing::IsEmpty;

/// Words of ordinary length, so that lines break as they do in a language.
Text lengthened(const Text& english)
{
    constexpr TextView filler = u" weitere lange Worte dazu und noch mehr davon bis es reicht";
    const std::size_t more = (english.size() * 4 + 9) / 10;
    Text longer = english;
    for (std::size_t i = 0; i < more; ++i)
        longer += filler[i % filler.size()];
    return longer;
}

std::string escaped(const Text& text)
{
    Text result = text;
    replaceAll(result, u"\\", u"\\\\");
    replaceAll(result, u"\n", u"\\n");
    replaceAll(result, u"\t", u"\\t");
    if (result.ends_with(u' '))
        result.replace(result.size() - 1, 1, u"\\s");
    return toUtf8(result);
}

/// Writes the string files of a language "XX" in which every text is 40 percent longer than the English one.
void writeLongTexts(const AskedTexts& english, const std::filesystem::path& stringFolder)
{
    const std::filesystem::path folder = stringFolder / "XX";
    std::filesystem::create_directories(folder);
    std::map<Text, std::ofstream> files;
    for (const auto& [key, text] : english) {
        const auto& [file, section, id] = key;
        if (!files.contains(file))
            (files[file] = std::ofstream(folder / (toUtf8(file) + ".lan"))) << "LanFile 1\n";
        files[file] << '[' << toUtf8(section) << "]\n" << id << " = " << escaped(lengthened(text.english)) << '\n';
    }
}

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
    EXPECT_EQ(toUtf8(desk.pages.takeUnspoken()), "") << window.name;
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

TEST_P(LayoutTest, FitsASmallScreenAtTwiceTheSize)
{
    constexpr QSize room(1280 - 16, 720 - 40); // what a window's frame leaves of 1280 x 720
    const QFont font = QApplication::font();
    QFont large = font;
    large.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(large);
    for (const char16_t* language : {u"GB", u"DE"}) {
        Desk desk(language);
        GetParam().open(desk, [&](QWidget& shown) {
            if (!shown.isWindow())
                return; // a page, which the host lets scroll
            shown.resize(room);
            QApplication::processEvents();
            EXPECT_LE(shown.width(), room.width()) << GetParam().name << " in " << toUtf8(language);
            EXPECT_LE(shown.height(), room.height()) << GetParam().name << " in " << toUtf8(language);
            EXPECT_THAT(layoutFaults(shown), IsEmpty()) << GetParam().name << " in " << toUtf8(language);
        });
    }
    QApplication::setFont(font);
}

TEST_P(LayoutTest, NamesEveryControl)
{
    for (const char16_t* language : {u"GB", u"DE"}) {
        Desk desk(language);
        GetParam().open(desk, [&](QWidget& shown) {
            EXPECT_THAT(namingFaults(shown), IsEmpty()) << GetParam().name << " in " << toUtf8(language);
        });
    }
}

/// How light a picture is on average, from 0 to 255.
int lightness(QWidget& window)
{
    const QImage picture = window.window()->grab().toImage().scaled(64, 64);
    int sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            sum += qGray(picture.pixel(x, y));
    }
    return sum / (picture.width() * picture.height());
}

TEST_P(LayoutTest, TakesItsColoursFromThePalette)
{
    const QPalette before = QApplication::palette();
    for (const auto& [ground, dark] : {std::pair(QColor(40, 40, 44), true), std::pair(QColor(239, 239, 239), false)}) {
        QApplication::setPalette(QPalette(ground));
        Desk desk;
        GetParam().open(
            desk, [isDark = dark](QWidget& shown) { EXPECT_EQ(lightness(shown) < 128, isDark) << GetParam().name; });
    }
    QApplication::setPalette(before);
}

INSTANTIATE_TEST_SUITE_P(Windows, LayoutTest, ::testing::ValuesIn(allWindows()), testName);

} // namespace
} // namespace zn::test
