#include "addin/macro/Placeholders.h"
#include "addin/pages/script/BlockWords.h"
#include "addin/pages/script/LineColours.h"
#include "addin/pages/script/MacroColours.h"
#include "addin/pages/script/TemplateCheck.h"
#include "tests/support/Files.h"

#include <cmath>
#include <gmock/gmock.h>
#include <QPalette>

using namespace zn;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

/// "T[OutputPath]" for each placeholder: the first letter of its kind, and its text.
std::vector<std::string> placeholdersIn(TextView line)
{
    std::vector<std::string> out;
    for (const Placeholder& one : findPlaceholders(line).found)
        out.push_back("HTFC"[static_cast<int>(one.kind)] + toUtf8(line.substr(one.position, one.length)));
    return out;
}

/// "line:column:marked text".
std::vector<std::string> mistakesIn(TextView source)
{
    std::vector<std::string> out;
    for (const TemplateProblem& one : checkTemplate(source))
        out.push_back(std::to_string(one.line) + ":" + std::to_string(one.column) + ":"
            + toUtf8(source.substr(one.position, one.length)));
    return out;
}

Text product(const std::string& name)
{
    return fromCodePage(test::readFile(ZN_SOURCE_DIR "/resources/macros/" + name));
}

TEST(Placeholders, AreFoundWhereARunFindsThem)
{
    EXPECT_THAT(placeholdersIn(u"x = [A] + \"{B}\" ' <Path> [[C]]"), ElementsAre("T[A]", "H{B}", "F<Path>", "T[[C]"));
    EXPECT_THAT(placeholdersIn(u"If a <Pat> b And c < Path > d Then"), IsEmpty());
    EXPECT_THAT(
        placeholdersIn(u"<Filename><Supported_2018ZN><filename>"), ElementsAre("F<Filename>", "F<Supported_2018ZN>"));
    // The type mark of an identifier is no card variable; inside a text it is.
    EXPECT_THAT(placeholdersIn(u"a% = b% + %Weight% & \"no%Part No%\""), ElementsAre("C%Weight%", "C%Part No%"));
    EXPECT_THAT(placeholdersIn(u"\"5 % of 10 %, 50%,60%\""), IsEmpty());
    EXPECT_THAT(findPlaceholders(u"a [b {c}").unclosed, ElementsAre(2u));
}

TEST(TemplateCheck, TheDefaultMacrosHaveNoMistakes)
{
    for (const char* name : {"ConvertFiles.bas", "PrintFiles.bas", "ExecuteScript.bas"})
        EXPECT_THAT(mistakesIn(product(name)), IsEmpty()) << name;
}

TEST(TemplateCheck, PlaceholdersCountAsValuesAndPlacesStay)
{
    struct Row {
        const char* source;
        std::vector<std::string> mistakes;
    };
    const Row rows[] = {
        {"Sub a()\r\n  b = [OutputSheets] + <Version>\r\nEnd Sub", {}},
        {"Option Explicit\r\nSub a()\r\n  [PdfInColor] = 1\r\nEnd Sub", {}},
        {"#If (\"<Supported_2017ZN>\") Then\nSub a()\nEnd Sub\n#Else\n)\n#End If", {}},
        {"#If (\"[PdfInColor]\") And [OutputSheets] Then\n#Else\n)\n#End If", {}},
        {"Option Explicit\nSub a()\n  Dim s\n  s = \"[A]\" & [NamedSheet] & typo\nEnd Sub", {"4:30:typo"}},
        {"Option Explicit\nSub a()\n  typo = \"<Filepath>\"\n  {#12}\nEnd Sub", {"3:3:typo"}},
        {"Sub a()\r  b = [LongName] +\r\n  c = \"open\rEnd Sub", {"2:18:+", "3:7:\"open"}},
        {"Sub a()\n  b = %Weight% * 2\n  c = znDocPART\nEnd Sub", {}},
        {"Sub a()\n  ' don't [touch\n  b = 1\nEnd Sub ' {", {"2:11:[", "4:11:{"}},
        {"' \u2013 [\u65E5]\nSub a()\n  b = \"x\u65E5\u672C\"\nEnd Sub", {"3:9:\u65E5\u672C"}},
        {"", {}},
        {"[A]", {}},
        {"If", {"1:1:If"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(mistakesIn(toText(row.source)), row.mistakes) << row.source;
    EXPECT_THAT(toUtf8(checkTemplate(u"' \u65E5").front().message), HasSubstr("ChrW(26085)"));
    EXPECT_THAT(toUtf8(checkTemplate(u"' [x").front().message), HasSubstr("no \"]\" in its line"));
}

TEST(LineColours, ColoursWordsTextsCommentsAndPlaceholders)
{
    const auto shownParts = [](TextView line, bool inComment = false) {
        std::vector<std::string> out;
        for (const ColouredPart& one : colouredLine(line, inComment).parts)
            out.push_back("KYDCSNhtfc"[static_cast<int>(one.part)] + toUtf8(line.substr(one.position, one.length)));
        return out;
    };
    EXPECT_THAT(shownParts(u"Public Sub a(ByVal Name As String)"),
        ElementsAre("KPublic", "KSub", "KByVal", "KName", "KAs", "YString"));
    EXPECT_THAT(shownParts(u"Name = x.End + &HFF ' Sub"), ElementsAre("N&HFF", "C' Sub"));
    EXPECT_THAT(shownParts(u"  #End If"), ElementsAre("D#End If"));
    EXPECT_THAT(shownParts(u"Open p For Append As #1"), ElementsAre("KOpen", "KFor", "KAppend", "KAs", "N1"));
    EXPECT_THAT(shownParts(u"s = \"a'b\" & 1.5: Rem [X]"), ElementsAre("S\"a'b\"", "N1.5", "CRem [X]", "t[X]"));
    EXPECT_THAT(shownParts(u"\"{#1}%V%<Path>"), ElementsAre("S\"{#1}%V%<Path>", "h{#1}", "c%V%", "f<Path>"));
    EXPECT_TRUE(colouredLine(u"' goes on _", false).commentGoesOn);
    EXPECT_THAT(shownParts(u"Sub no", true), ElementsAre("CSub no"));
}

/// The contrast of two colours, 1 to 21, as the rules for accessible pages reckon it.
double contrast(const QColor& one, const QColor& other)
{
    const auto linear
        = [](double part) { return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    const auto luminance = [&](const QColor& colour) {
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

TEST(MacroColours, AreReadableOnLightAndDarkGround)
{
    for (const auto& [base, text] : {std::pair(Qt::white, Qt::black), std::pair(Qt::black, Qt::white)}) {
        QPalette palette(text, Qt::gray);
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Highlight, QColor(0, 0, 200));
        const MacroColours colours = macroColours(palette);
        int part = 0;
        for (const QTextCharFormat& format : colours.parts) {
            EXPECT_GE(contrast(format.foreground().color(), base), 4.5) << part;
            EXPECT_EQ(format.background().style() != Qt::NoBrush, "KYDCSNhtfc"[part] >= 'a') << part;
            EXPECT_EQ(format.fontWeight() == QFont::DemiBold, part == 0 || part == 2) << part;
            ++part;
        }
        EXPECT_GE(contrast(colours.error, base), 4.5);
        // From the ground to the text: what is only to be felt, what is to be read aside, and what is to be read.
        const QColor* rising[]
            = {&colours.gutter, &colours.currentLine, &colours.lineNumber, &colours.currentLineNumber};
        double before = 1;
        for (const QColor* each : rising) {
            EXPECT_GT(contrast(*each, base), before);
            before = contrast(*each, base);
        }
        EXPECT_LT(contrast(colours.currentLine, base), 1.3);
        EXPECT_EQ(colours.blockWord.red(), QColor(base).red() * 65 / 100);
        EXPECT_GT(colours.blockWord.blue(), colours.blockWord.red());
    }
}

TEST(BlockWords, WordsOfABlockBelongTogether)
{
    const auto wordsAt = [](TextView source, TextView at) {
        std::string out;
        const std::vector<MacroBlock> blocks = macroBlocks(source);
        const MacroBlock* block = blockAt(blocks, source.find(at) + 1);
        for (const SourceRange& one : block ? block->words : std::vector<SourceRange>())
            out += toUtf8(source.substr(one.position, one.length)) + ";";
        return out + (block && block->closed ? "closed" : "");
    };
    const Text source = u"Private Declare Function f Lib \"x\" ()\n"
                        u"#If VBA7 Then\nPublic Function g(a)\n#Else\nFunction g(b)\n#End If\n"
                        u"  If a Then Exit Function Else b\n"
                        u"  If c Then\n ElseIf d Then\n Else ' x\n End  If\n"
                        u"  For Each i In j: For k = 1 To 2\n  Next k, i\n"
                        u"  Select Case a\n Case 1\n Case Else: type = 2\n End Select\n"
                        u"  Do While a\n Loop\n While a\n Wend\n With .x\nEnd Function\n";
    EXPECT_EQ(wordsAt(source, u"ElseIf"), "If;ElseIf;Else;End  If;closed");
    EXPECT_EQ(wordsAt(source, u"Case Else"), "Select;Case;Case;End Select;closed");
    EXPECT_EQ(wordsAt(source, u"For k"), "For;Next;closed");
    EXPECT_EQ(wordsAt(source, u"For Each"), "For;Next;closed");
    EXPECT_EQ(wordsAt(source, u"Loop"), "Do;Loop;closed");
    EXPECT_EQ(wordsAt(source, u"Wend"), "While;Wend;closed");
    EXPECT_EQ(wordsAt(source, u"With"), "With;");
    EXPECT_EQ(wordsAt(source, u"If VBA7"), "If;Else;End If;closed");
    EXPECT_EQ(wordsAt(source, u"End Function"), "Function;End Function;closed");
    EXPECT_EQ(wordsAt(source, u"Declare"), "");
    EXPECT_EQ(wordsAt(u"If a Then\nEndIf\nNext\nEnd Sub", u"If a"), "If;EndIf;closed");
    EXPECT_TRUE(opensBlock(u"  Else") && opensBlock(u"Case 1") && opensBlock(u"With x"));
    EXPECT_FALSE(opensBlock(u"If a Then b") || opensBlock(u"End Sub") || opensBlock(u"x = 1"));
}

} // namespace
