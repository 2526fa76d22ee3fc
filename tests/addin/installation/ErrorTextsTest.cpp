#include "addin/installation/ErrorTexts.h"
#include "arkin/store/Codes.h"
#include "tests/addin/libraries/lexmgr/LexFixture.h"

namespace zn {
namespace {

TEST(ErrorTextsTest, SaysTheSentenceOfACode)
{
    const std::pair<std::uint32_t, const char*> expected[] = {
        {0, "The method was successfully executed."},
        {1, "The method was successfully executed but returned 'false'."},
        {0x80040206, "The database could not be opened."},
        {0x80040221, "The database could not be opened."},
        {0x80040220, "The server was not found."},
        {0x80040222, "The ODBC data source was not found."},
        // network
        {0x80072EE7, "The server name could not be resolved."},
        {0x80072EFD, "The attempt to connect to the server failed."},
        {0x80072F83, "The Internet connection has been lost"},
        {0x80072EE0, "The network reported the error 12000."},
        {0x80072F8F, "The network reported the error 12175."},
        {0x80072F90, "The error 0x80072F90 occurred."},
        // revision control
        {0x80040432, "Archive server revision control error 1074 (0x0432)"},
        {0x800404C4, "Archive server revision control error 1220 (0x04C4)"},
        {0x80040431, "The error 0x80040431 occurred."},
        {0x800404C5, "The error 0x800404C5 occurred."},
        // the operating system's
        {0x80070005, "Permission denied."},
        {0x80070070, "No space left on device."},
        {0x8007FFFF, "The error 0x8007FFFF occurred."},
    };
    for (const auto& [code, text] : expected)
        EXPECT_EQ(toUtf8(errorText(statusCode(code))), text) << std::hex << code;
}

TEST(ErrorTextsTest, SaysWhatTheVaultSays)
{
    int known = 0;
    for (const std::uint32_t page :
        {0x80000000U, 0x80020000U, 0x80004000U, 0x8000FF00U, 0x80040200U, 0x80040300U, 0x80070000U}) {
        for (std::uint32_t code = page; code < page + 0x100; ++code) {
            const auto* text = zn::arkin::statusText(statusCode(code));
            if (!text)
                continue;
            EXPECT_EQ(toUtf8(errorText(statusCode(code))), text->sentence) << text->name;
            ++known;
        }
    }
    EXPECT_GE(known, 23);
}

using LookedUpErrorTexts = lexmgr::LexFixture;

TEST_F(LookedUpErrorTexts, AreTheLanguages)
{
    write("LanFiles/DE/ArkInterface.lan",
        "LanFile 1\n[ErrorCodes]\n2 = gab 'false'\n22 = Datenbank\n71 = Archiv %d (0x0%X)\n");
    write("LanFiles/DE/Error Messages.lan", "LanFile 1\n[Database]\n207 = zu\n208 = kein Server\n209 = keine Quelle\n");
    const auto strings = open();

    EXPECT_EQ(errorText(1, strings.get()), u"gab 'false'");
    EXPECT_EQ(errorText(statusCode(0x80040433), strings.get()), u"Archiv 1075 (0x0433)");
    const std::pair<std::uint32_t, const char16_t*> database[] = {
        {0x80040206, u"zu"},
        {0x80040221, u"zu"},
        {0x80040220, u"kein Server"},
        {0x80040222, u"keine Quelle"},
        {0x80004005, u"Datenbank"},
    };
    for (const auto& [code, text] : database)
        EXPECT_EQ(databaseErrorText(statusCode(code), strings.get()), text) << std::hex << code;
}

} // namespace
} // namespace zn
