#include "addin/variables/TaskRules.h"

#include "tests/support/Failures.h"
#include "tests/support/FakeHost.h"

#include <gtest/gtest.h>

namespace zn {

TEST(TaskRules, VariablesThatFollowFromOthersAreComputed)
{
    test::FakeHost host;
    host.cardVariables = {u"Number", u"Title", u"Note"};
    host.taskVariables = {{u"__type", 1}, {u"OutputPath", u"<Path>\\%Note%\\%title%"}, {u"OutputPath2", u"%Number%"},
        {u"UsedVariables", u"Title"}, {u"SheetMetalOptions", 7}, {u"SheetMetalGeometry", 0}};
    settleVariables(host.vault(), host.task());
    EXPECT_EQ(host.taskVariables.at(u"UsedVariables"), Value(u"Number,Note"));
    // The others as on a new task's page, where nothing but what needs the geometry is off.
    EXPECT_EQ(host.taskVariables.at(u"SheetMetalOptions"), Value(2076));

    host.taskVariables = {{u"__type", 2}, {u"FileFormat", u"no format of a print"}};
    settleVariables(host.vault(), host.task());
    EXPECT_EQ(host.taskVariables.size(), 2U);
}

TEST(TaskRules, TheSheetMetalNumberHasABitForEachSetting)
{
    test::FakeHost host;
    const auto numberWith = [&](std::map<Text, Value> settings) {
        host.taskVariables = std::move(settings);
        host.taskVariables[u"__type"] = 1;
        host.taskVariables[u"SheetMetalOptions"] = 4711; // what is stored doesn't count
        settleVariables(host.vault(), host.task());
        return host.taskVariables.at(u"SheetMetalOptions");
    };
    EXPECT_EQ(numberWith({}), Value(2175));
    const std::pair<const char16_t*, std::int32_t> without[]
        = {{u"SheetMetalHiddenEdges", 2175 - 2}, {u"SheetMetalBendLines", 2175 - 4}, {u"SheetMetalSketches", 2175 - 8},
            {u"SheetMetalLibraryFeatures", 2175 - 32}, {u"SheetMetalFormingTools", 2175 - 64},
            {u"SheetMetalBoundingBox", 127}, {u"SheetMetalGeometry", 2076}};
    for (const auto& [name, expected] : without)
        EXPECT_EQ(numberWith({{name, 0}}), Value(expected)) << toUtf8(name);
    EXPECT_EQ(numberWith({{u"SheetMetalMergeCoplanar", 1}}), Value(2175 - 16));
}

TEST(TaskRules, AFormatIsOneOfTheList)
{
    test::FakeHost host;
    const auto settled = [&](const char16_t* format) {
        host.taskVariables = {{u"__type", 1}, {u"FileFormat", format}};
        return test::raisedBy([&] { settleVariables(host.vault(), host.task()); });
    };
    EXPECT_EQ(settled(u"STL").sentence.substr(0, 80),
        "The variable 'FileFormat' doesn't take \"STL\": one of \"<Prompt the user>\", \"3D PD");
    for (const char16_t* format : {u"stl (*.STL)", u"<Prompt the user>", u""})
        EXPECT_EQ(settled(format).status, S_OK);
}

} // namespace zn
