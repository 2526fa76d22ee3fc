#include "tests/addin/flows/FlowFixture.h"
#include "tests/support/FakeHost.h"

namespace zn::test {

TEST_F(FlowFixture, DetailsTitleFollowsKindAndState)
{
    const struct {
        std::int32_t kind;
        TaskRunState state;
        const char16_t* title;
    } rows[] = {
        {1, TaskRunState::Running, u"Selected Files"},
        {1, TaskRunState::Finished, u"Converted Files"},
        {2, TaskRunState::FinishedWithErrors, u"Printed Files"},
        {2, TaskRunState::Suspended, u"Selected Files"},
        {3, TaskRunState::Cancelled, u"Selected Files"},
        {7, TaskRunState::Finished, u""},
        {7, TaskRunState::Queued, u"Selected Files"},
    };
    for (const auto& row : rows) {
        FakeHost host;
        host.taskVariables[u"__type"] = row.kind;
        host.states = {row.state};
        ASSERT_EQ(send(TaskCmdDetails, host.task()), S_OK) << row.kind;
        EXPECT_EQ(cmd.text, row.title) << row.kind;
        EXPECT_EQ(cmd.taskObject, addIn);
        EXPECT_TRUE(pages().isWindow(cmd.parentWindow));
    }
    EXPECT_EQ(send(TaskCmdDetails, nullptr), E_POINTER);
}

} // namespace zn::test
