#include "macro/MacroResources.h"

#include "addin/TaskVariables.h"
#include "base/Status.h"

#include <gtest/gtest.h>
#include <set>

namespace zn {

TEST(DefaultMacro, IsASingleByteTextWithItsHead)
{
    const Text macro = defaultMacro(TaskKind::Conversion);
    EXPECT_TRUE(macro.starts_with(u"'ZENTREL ARKIN 2018 - Default Convert Task Script\r\n'-----"));
    std::set<char16_t> wide;
    for (std::size_t i = 0; i < macro.size(); ++i) {
        if (macro[i] > 127)
            wide.insert(macro[i]);
        if (macro[i] == u'\n') {
            EXPECT_EQ(macro[i - 1], u'\r') << "at " << i;
        }
    }
    EXPECT_EQ(wide, std::set<char16_t>{u'\u2019'});
    EXPECT_EQ(fromCodePage(toCodePage(macro)), macro);
    EXPECT_EQ(defaultMacro(TaskKind::General),
        u"Option Explicit\r\n\r\nDim znApp As Object\r\n\r\nSub main()\r\n    Set znApp = Application.Zentrel\r\nEnd "
        u"Sub\r\n");
    EXPECT_THROW(defaultMacro(TaskKind::Printing), StatusError);
}

/// A name that no page writes would leave a hole in every conversion's macro; an option that no macro reads would be a
/// setting without effect.
TEST(DefaultMacro, UsesEveryFormatOptionAndNoUnknownName)
{
    const Text macro = defaultMacro(TaskKind::Conversion);
    std::set<Text> used;
    for (std::size_t at = 0; (at = macro.find(u'[', at)) != Text::npos; ++at) {
        const std::size_t end = macro.find(u']', at);
        ASSERT_NE(end, Text::npos);
        const Text name = macro.substr(at + 1, end - at - 1);
        EXPECT_NE(findTaskVariable(name), nullptr) << toUtf8(name);
        used.insert(name);
    }
    for (const TaskVariable& variable : taskVariables()) {
        // The eight single settings of a flat pattern reach the macro as one number.
        const bool inNumber = variable.name.starts_with(u"SheetMetal") && variable.name != u"SheetMetalOptions"
            && variable.name != u"SheetMetalExportAs";
        if (variable.owner == VariableOwner::FormatOptions) {
            EXPECT_EQ(used.contains(Text(variable.name)), !inNumber) << toUtf8(variable.name);
        }
    }
}

} // namespace zn
