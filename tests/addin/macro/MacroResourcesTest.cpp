#include "addin/macro/MacroResources.h"

#include "addin/variables/TaskVariables.h"

#include <gtest/gtest.h>
#include <set>

namespace zn {

TEST(DefaultMacro, IsASingleByteTextWithItsHead)
{
    const std::pair<TaskKind, const char16_t*> macros[] = {
        {TaskKind::Conversion, u"'ZENTREL ARKIN 2018 - Default Convert Task Script\r\n'-----"},
        {TaskKind::Printing, u"'ZENTREL ARKIN 2018 \u2013 Default Print Task Script\r\n'-----"},
    };
    for (const auto& [kind, head] : macros) {
        const Text macro = defaultMacro(kind);
        EXPECT_TRUE(macro.starts_with(head));
        for (std::size_t at = 0; (at = macro.find(u'\n', at)) != Text::npos; ++at)
            EXPECT_EQ(macro[at - 1], u'\r') << "at " << at;
        EXPECT_EQ(fromCodePage(toCodePage(macro)), macro);
    }
    EXPECT_EQ(defaultMacro(TaskKind::General),
        u"Option Explicit\r\n\r\nDim znApp As Object\r\n\r\nSub main()\r\n    Set znApp = Application.Zentrel\r\nEnd "
        u"Sub\r\n");
}

/// Administrators know the macro by its procedures, and take some of them over into their own.
TEST(DefaultMacro, PrintsWithTheProceduresThatAdministratorsKnow)
{
    std::set<Text> procedures;
    for (const Text& line : split(defaultMacro(TaskKind::Printing), u'\n')) {
        for (const TextView word : {u"Sub ", u"Function "}) {
            if (line.starts_with(word))
                procedures.insert(line.substr(word.size(), line.find(u'(') - word.size()));
        }
    }
    EXPECT_EQ(procedures,
        (std::set<Text>{u"PathAppend", u"Log", u"bIsSupportedExtension", u"GetPrinter", u"GetPaperSize", u"main"}));
}

std::set<Text> namesInBrackets(const Text& macro)
{
    std::set<Text> names;
    for (std::size_t at = 0; (at = macro.find(u'[', at)) != Text::npos; ++at)
        names.insert(macro.substr(at + 1, macro.find(u']', at) - at - 1));
    return names;
}

/// A name that no page writes would leave a hole in the macro; a setting that no macro reads would be one without
/// effect.
TEST(DefaultMacro, UsesEverySettingOfItsPagesAndNoUnknownName)
{
    const struct {
        TaskKind kind;
        VariableOwner owner;
        std::set<TextView> unused;
    } macros[] = {
        // What the launch asks for and what it takes from a list; the macro gets the answers.
        {TaskKind::Printing, VariableOwner::PrintPages,
            {u"__printer_prnamelist", u"__printer_usersizechange", u"__printer_userorientchange",
                u"__printer_showprintdlg", u"__printer_autoselectrefstype", u"__printer_refversiontype"}},
        // The eight single settings of a flat pattern reach the macro as one number.
        {TaskKind::Conversion, VariableOwner::FormatOptions,
            {u"SheetMetalGeometry", u"SheetMetalHiddenEdges", u"SheetMetalBendLines", u"SheetMetalSketches",
                u"SheetMetalLibraryFeatures", u"SheetMetalFormingTools", u"SheetMetalBoundingBox",
                u"SheetMetalMergeCoplanar"}},
    };
    for (const auto& [kind, owner, unused] : macros) {
        const auto used = namesInBrackets(defaultMacro(kind));
        for (const Text& name : used)
            EXPECT_NE(findTaskVariable(name), nullptr) << toUtf8(name);
        for (const TaskVariable& variable : taskVariables())
            EXPECT_TRUE(variable.owner != owner || used.contains(Text(variable.name)) != unused.contains(variable.name))
                << toUtf8(variable.name);
    }
}

} // namespace zn
