#include "tests/addin/libraries/lexmgr/LexFixture.h"

#include <gmock/gmock.h>

namespace lexmgr {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class StringTableTest : public LexFixture {
protected:
    /// The text of an entry, or "English" if the language doesn't have it.
    std::u16string text(Library& library, int id, const char16_t* section = u"TS", const char16_t* file = u"ZN")
    {
        return library.TSS_internal(id, section, file, u"English");
    }
    std::vector<std::string> problems(Library& library)
    {
        std::vector<std::string> all;
        for (const auto& problem : library.takeProblems())
            all.push_back(std::filesystem::path(problem).string());
        return all;
    }
};

TEST_F(StringTableTest, FallsBackToEnglishEntryByEntry)
{
    write("LanFiles/DE/ZN.lan",
        "\xEF\xBB\xBFLanFile 1\r\n; comment\r\n\r\n[TS]\r\n 1 = Gr\xC3\xB6\xC3\x9F"
        "e = 3 \r\n2=\\s\\ta\\nb\\\\c\\s\n[Dlg]\n1 = Andere\n[TS]\n3 =\n");
    auto library = open();
    EXPECT_EQ(text(*library, 1), u"Gr\u00F6\u00DFe = 3");
    EXPECT_EQ(text(*library, 2), u" \ta\nb\\c ");
    EXPECT_EQ(text(*library, 3), u"");
    EXPECT_EQ(text(*library, 1, u"Dlg"), u"Andere");
    EXPECT_EQ(text(*library, 4), u"English");
    EXPECT_EQ(text(*library, 1, u"Other"), u"English");
    EXPECT_EQ(text(*library, 1, u"TS", u"NoFile"), u"English");
    EXPECT_EQ(text(*library, 1, u"TS", u"../DE/ZN"), u"English");
    EXPECT_EQ(std::u16string(library->TSS_internal(9, nullptr, nullptr, nullptr)), u"");
    for (const char* language : {"FR", "", "..", "../LanFiles/DE"})
        EXPECT_EQ(text(*open(language), 1), u"English") << language;
    EXPECT_THAT(problems(*library), IsEmpty());
}

TEST_F(StringTableTest, TakesTheFileThatWasPushedLast)
{
    write("LanFiles/DE/A.lan", "LanFile 1\n[TS]\n1 = aus A\n");
    write("LanFiles/DE/B.lan", "LanFile 1\n[TS]\n1 = aus B\n");
    auto library = open();
    library->gvPushDefaultFile(u"A");
    library->gvPushDefaultFile(u"B");
    EXPECT_EQ(text(*library, 1, u"TS", nullptr), u"aus B");
    EXPECT_EQ(text(*library, 1, u"TS", u"A"), u"aus A");
    library->gvPopDefaultFile();
    EXPECT_EQ(text(*library, 1, u"TS", u""), u"aus A");
    library->gvPopDefaultFile();
    library->gvPopDefaultFile();
    EXPECT_EQ(text(*library, 1, u"TS", nullptr), u"English");
}

TEST_F(StringTableTest, KeepsWhatStandsBeforeABrokenLineAndNamesIt)
{
    struct Case {
        std::string content, problem;
        bool first; ///< whether the entry before the broken line counts
    };
    const std::string good = "LanFile 1\n[TS]\n1 = Eins\n";
    const Case cases[] = {
        {"", "line 1 on: the file is not a string file", false},
        {"[TS]\n1 = Eins\n", "line 1 on: the file is not a string file", false},
        {"LanFile 2\n[TS]\n1 = Eins\n", "line 1 on: the file has another version than this product reads", false},
        {"LanFile x\n[TS]\n1 = Eins\n", "line 1 on: the file has another version", false},
        {"LanFile 1\n1 = Eins\n", "line 2 on: the entry stands before the first section", false},
        {good + "\n[TS\n2 = Zwei\n", "line 5 on: a section is written as [Name].", true},
        {good + "zwei = Zwei\n", "line 4 on: an entry is written as number = text.", true},
        {good + "2 Zwei\n", "line 4 on: an entry is written as number = text.", true},
        {good + "99999999999 = Zwei\n", "line 4 on: an entry is written as number = text.", true},
        {good + "2 = Zw\xC3\n", "line 4 on: the line is no UTF-8 text.", true},
        {good + "2 = Zw\\ei\n", "line 4 on: a backslash is followed by", true},
        {good + "2 = Zwei\\", "line 4 on: a backslash is followed by", true},
        {good + "1 = Zwei\n", "line 4 on: the section has an entry of this number already.", true},
    };
    for (const Case& each : cases) {
        write("LanFiles/DE/ZN.lan", each.content);
        auto library = open();
        EXPECT_EQ(text(*library, 1), each.first ? u"Eins" : u"English") << each.problem;
        EXPECT_EQ(text(*library, 2), u"English") << each.problem;
        EXPECT_THAT(problems(*library),
            ElementsAre(AllOf(HasSubstr("DE/ZN.lan\" cannot be read from " + each.problem),
                HasSubstr("Install the language files"))));
        EXPECT_THAT(problems(*library), IsEmpty()) << "told once";
    }
}

TEST_F(StringTableTest, RefusesATranslationWithOtherPlaceholders)
{
    write("LanFiles/DE/ZN.lan",
        "LanFile 1\n[TS]\n1 = Datei %s fehlt\n2 = %3d von %s\n3 = 100 % der Seiten\n4 = %s %s\n5 = 5%%\n");
    auto library = open();
    const auto ask = [&](int id, const char16_t* english) {
        return std::u16string(library->TSS_internal(id, u"TS", u"ZN", english));
    };
    EXPECT_EQ(ask(1, u"The file %s is missing"), u"Datei %s fehlt");
    EXPECT_EQ(ask(2, u"%d of %s"), u"%3d von %s");
    EXPECT_EQ(ask(3, u"100 % of the pages"), u"100 % der Seiten");
    EXPECT_EQ(ask(5, u"5%%"), u"5%%");
    EXPECT_THAT(problems(*library), IsEmpty());
    EXPECT_EQ(ask(4, u"%s has %d"), u"%s has %d");
    EXPECT_EQ(ask(4, u"%s has %d"), u"%s has %d");
    EXPECT_THAT(problems(*library), ElementsAre(HasSubstr("other placeholders than the English text in entry 4")));
}

TEST_F(StringTableTest, ShowsAnObserverEachLookup)
{
    write("LanFiles/DE/ZN.lan", "LanFile 1\n[TS]\n1 = Eins\n");
    auto library = open();
    std::vector<std::pair<int, bool>> seen;
    library->observe([&](const Lookup& lookup) { seen.emplace_back(lookup.id, lookup.found); });
    text(*library, 1);
    text(*library, 2);
    EXPECT_THAT(seen, ElementsAre(std::pair(1, true), std::pair(2, false)));
}

} // namespace
} // namespace lexmgr
