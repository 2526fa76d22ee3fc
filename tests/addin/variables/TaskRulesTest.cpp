#include "addin/variables/TaskRules.h"

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

TEST(TaskRules, AFormatIsOneOfTheList)
{
    test::FakeHost host;
    const auto sentenceFor = [&](const char16_t* format) -> std::string {
        host.taskVariables = {{u"__type", 1}, {u"FileFormat", format}};
        try {
            settleVariables(host.vault(), host.task());
        } catch (const StatusError& error) {
            return error.what();
        }
        return {};
    };
    EXPECT_EQ(sentenceFor(u"STL").substr(0, 80),
        "The variable 'FileFormat' doesn't take \"STL\": one of \"<Prompt the user>\", \"3D PD");
    for (const char16_t* format : {u"stl (*.STL)", u"<Prompt the user>", u""})
        EXPECT_EQ(sentenceFor(format), "");
}

} // namespace zn
