#include "tests/arkin/tasks/TaskFixture.h"

#include "arkin/tasks/RunRequests.h"

#include <gmock/gmock.h>
#include <soci/soci.h>

namespace zn::arkin::test {

class RunRequestsTest : public TaskFixture {
protected:
    void put(std::int32_t id, int state, bool taken)
    {
        const auto process = taken ? thisProcess().process : 0;
        const long long mark = thisProcess().start, at = here.clock.now();
        const auto hostName = zn::toUtf8(thisProcess().host);
        here.database.session() << "UPDATE task_runs SET state = :s, owner_process = :p, owner_mark = :m, "
                                   "owner_host = :h, heartbeat_at = :at WHERE id = :id",
            soci::use(state), soci::use(process), soci::use(mark), soci::use(hostName), soci::use(at), soci::use(id);
    }
};

TEST_F(RunRequestsTest, EveryStateAnswersEveryRequest)
{
    constexpr int refused = 0;
    const struct {
        int state;
        bool taken;
        int cancelled, suspended, resumed;
    } rows[] = {
        {1, false, 8, 5, refused},
        {5, false, 8, 5, 1},
        {3, true, 6, 10, refused},
        {5, true, 6, 5, 11},
        {6, true, 6, refused, refused},
        {10, true, 6, 10, 11},
        {11, true, 6, 10, 11},
        {7, true, refused, refused, refused},
        {8, true, 8, refused, refused},
        {9, true, refused, refused, refused},
    };
    const auto id = launch(u"finish").id;
    const auto answer = [&](const auto& row, auto request) {
        put(id, row.state, row.taken);
        try {
            return static_cast<int>(request(runs, id, here.clock.now()).state);
        } catch (const zn::StatusError& error) {
            EXPECT_THAT(error.what(), ::testing::StartsWith("Run 1 "));
            EXPECT_EQ(static_cast<int>(runs.get(id).state), row.state);
            return refused;
        }
    };
    for (const auto& row : rows) {
        EXPECT_EQ(answer(row, requestCancel), row.cancelled) << "cancel in state " << row.state;
        EXPECT_EQ(answer(row, requestSuspend), row.suspended) << "suspend in state " << row.state;
        EXPECT_EQ(answer(row, requestResume), row.resumed) << "resume in state " << row.state;
    }
}

TEST_F(RunRequestsTest, RunsAreFoundByNumberAndIdentifier)
{
    const auto run = launch(u"finish");
    const auto bare = zn::toLower(run.guid.substr(1, 36));
    EXPECT_EQ(runs.get(u"1").guid, run.guid);
    EXPECT_EQ(runs.get(run.guid).id, run.id);
    EXPECT_EQ(runs.get(bare).id, run.id);
    EXPECT_THAT(sentenceOf([&] { runs.get(u"2"); }), ::testing::StartsWith("There is no run 2;"));
    EXPECT_THAT(sentenceOf([&] { runs.get(u"x'y"); }), ::testing::StartsWith("There is no run 'x'y';"));
}

} // namespace zn::arkin::test
