#include "addin/macro/PlaceholderCheck.h"
#include "tests/support/FakeHost.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;

namespace zn {

TEST(PlaceholderCheck, KnowsWhatTheTaskTheVaultAndTheRunHave)
{
    test::FakeHost host;
    host.cardVariables = {u"Number", u"Title"};
    host.taskVariables = {
        {u"UsedVariables", u"Title,Gone"},
        {u"Own", 1},
        {u"__script", u"[Own] [own] [OutputPath]\r%Title% %Number%\r\n{run} {#1} {#2}\n\n' %Gone% <Filename>"},
    };
    std::vector<std::string> found;
    for (const ArkMacroWarning& one : checkScript(host.vault(), host.task(), {u"Run", u"#1"}))
        found.push_back(std::to_string(one.line) + ":" + std::to_string(one.column) + " " + toUtf8(one.sentence));
    EXPECT_THAT(found,
        ElementsAre("1:7 The task has no variable 'own': nothing will stand here.",
            "2:9 The task doesn't use the card variable 'Number', so that this stays as it is. Add it to "
            "UsedVariables.",
            "3:12 A run has no value '#2': nothing will stand here.", "5:3 The vault has no card variable 'Gone'."));
}

} // namespace zn
