#include "addin/variables/TaskVariables.h"

#include "addin/variables/OutputFormats.h"
#include "tests/support/Failures.h"
#include "tests/support/FakeHost.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace zn {

TEST(OutputFormats, HaveOptionsOfTheirOwnWhereTheirDialogIs)
{
    std::string codes;
    for (const OutputFormat& format : outputFormats())
        codes += format.hasOptions ? " " + std::to_string(format.code) : "";
    EXPECT_EQ(codes, " 3 5 6 8 9 10 13 16 17 18 19 20 22");
}

TEST(TaskVariables, AreReadInTheWantedType)
{
    test::FakeHost host;
    const auto task = host.task();
    host.taskVariables = {{u"__type", u"2"}, {u"PdfInColor", 7}, {u"__printer_margintop", 12}, {u"StlQuality", u"2"},
        {u"OutputPath2", u""}, {u"FileCardData", u"x"}};
    EXPECT_EQ(readKind(task, true), TaskKind::Printing);
    EXPECT_EQ(readBoolean(task, u"PdfInColor"), true);
    EXPECT_EQ(readFloat(task, u"__printer_margintop"), 12.0F);
    EXPECT_EQ(readInteger(task, u"StlQuality"), 2);
    EXPECT_EQ(readText(task, u"OutputPath2"), u"");
    EXPECT_EQ(readText(task, u"NamedConf"), std::nullopt);
    EXPECT_THROW(readInteger(task, u"FileCardData"), StatusError);

    writeVariable(task, u"FileCardData", Text());
    EXPECT_EQ(host.taskVariables.at(u"FileCardData"), Value(Text()));

    host.taskVariables.erase(u"__type");
    EXPECT_EQ(readKind(task, true), TaskKind::General);
    host.failures["GetValue __type"] = E_ACCESSDENIED;
    test::expectStatus(E_ACCESSDENIED, [&] { readKind(task, true); });
    test::expectStatus(E_POINTER, [&] { readKind(task, false); }); // a run is no definition
    test::expectStatus(E_POINTER, [&] { readVariable(host.vault(), u"__type"); });
}

TEST(TaskVariables, StartWithWhatThePagesStore)
{
    const auto valueIn = [](TaskKind kind, TextView name) -> Value {
        const auto variables = initialVariables(kind, u"Nightly");
        const auto hit = std::ranges::find(variables, name, &std::pair<Text, Value>::first);
        return hit == variables.end() ? Value() : hit->second;
    };
    EXPECT_EQ(valueIn(TaskKind::Conversion, u"ErrorLogPath"), Value(u"\\Logs\\Nightly"));
    EXPECT_EQ(valueIn(TaskKind::Conversion, u"SheetMetalOptions"), Value(2175));
    EXPECT_EQ(valueIn(TaskKind::Conversion, u"__printer_defpapsize"), Value());
    EXPECT_EQ(valueIn(TaskKind::Printing, u"__printer_defpapsize"), Value(10));
    EXPECT_EQ(valueIn(TaskKind::Printing, u"__menucmd_display"), Value(true));
    EXPECT_EQ(valueIn(TaskKind::General, u"__menucmd_display"), Value(false));
    EXPECT_EQ(valueIn(TaskKind::General, u"ErrorLogPath"), Value());
    for (const TaskVariable& variable : taskVariables()) {
        const Value initial = valueOf(variable.initial);
        EXPECT_TRUE(initial.isEmpty() || initial.type() == variable.type) << toUtf8(variable.name);
        const Value absent = valueOf(variable.absent);
        EXPECT_TRUE(absent.isEmpty() || absent.type() == variable.type) << toUtf8(variable.name);
        EXPECT_EQ(findTaskVariable(variable.name), &variable) << toUtf8(variable.name);
    }
}

} // namespace zn
