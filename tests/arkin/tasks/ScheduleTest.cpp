#include "arkin/tasks/LaunchFlow.h"
#include "arkin/tasks/Worker.h"
#include "tests/arkin/tasks/TaskFixture.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::arkin::test {

// Moments are those of `TZ=ZONE date -d 'DATE TIME' +%s`.
TEST(ScheduleTimeTest, ComesOnceADayOnTheClocksOfItsZone)
{
    constexpr std::int32_t all = ScheduleTime::everyDay, thursday = 1 << 4;
    const struct {
        const char* what;
        ScheduleTime time;
        std::vector<std::int64_t> moments; ///< each the next of the one before
    } rows[] = {
        {"a day of 23 hours", {1320, all, "Europe/Berlin"}, {1774731600, 1774814400}},
        {"a day of 25 hours", {1320, all, "Europe/Berlin"}, {1792872000, 1792962000}},
        {"02:30 is skipped", {150, all, "Europe/Berlin"}, {1774661400, 1774746000, 1774830600}},
        {"02:30 comes twice", {150, all, "Europe/Berlin"}, {1792801800, 1792888200, 1792978200}},
        {"a day is skipped", {1320, all, "Pacific/Apia"}, {1325232000, 1325239200, 1325318400}},
        {"no clocks change", {1320, all, "UTC"}, {1774735200, 1774821600, 1774908000}},
        {"a day of the week", {1320, thursday, "Europe/Berlin"}, {1795467600, 1795726800, 1795726800 + 7 * 86400}},
    };
    for (const auto& row : rows)
        for (std::size_t i = 1; i < row.moments.size(); ++i) {
            EXPECT_EQ(nextTime(row.time, row.moments[i - 1]), row.moments[i]) << row.what;
            EXPECT_EQ(nextTime(row.time, row.moments[i] - 1), row.moments[i]) << row.what;
        }
}

class ScheduleTest : public TaskFixture {
protected:
    static RunInfo launchUnasked(LaunchFlow& flow)
    {
        requireSettled(flow, flow.prepare(0), {});
        return flow.enqueue();
    }
    std::int32_t schedule(const zn::Text& task)
    {
        Schedule row;
        row.taskName = task;
        row.userName = u"eva";
        row.time = {1320, ScheduleTime::everyDay, "UTC"};
        row.items = oneFile();
        row.nextAt = nextTime(row.time, here.clock.now());
        return schedules.add(row);
    }
    static Worker::Tally workerOnce(TaskHost& host, std::vector<ScheduledRun>* due = nullptr)
    {
        const std::atomic<bool> interrupted = false;
        const Worker::Listener listener{[](const RunInfo&) {}, {}, [](const RunInfo&) {},
            [](const RunInfo&, const auto&) {},
            [due](const ScheduledRun& run) {
                if (due)
                    due->push_back(run);
            }};
        return Worker(host, listener, interrupted, {launchUnasked, {}}).work(true);
    }

    ScheduleStore schedules{here.database, 1};
};

TEST_F(ScheduleTest, ALateWorkerMakesUpForMissedTimesOnceAndTellsWhatItCannotLaunch)
{
    define(u"Night", u"finish");
    const auto gone = define(u"Gone", u"finish");
    const auto first = schedule(u"night");
    schedule(u"Gone");
    tasks.remove(gone.id);
    EXPECT_EQ(workerOnce(host).finished, 0);
    here.clock.time += 5 * std::int64_t{86400};
    std::vector<ScheduledRun> due;
    const auto tally = workerOnce(host, &due);
    EXPECT_EQ(tally.finished, 1);
    EXPECT_EQ(tally.others, 1);
    ASSERT_EQ(due.size(), 2U);
    const auto made = runs.get(due[0].run.id), failed = runs.get(due[1].run.id);
    EXPECT_EQ(made.state, zn::TaskRunState::Finished);
    EXPECT_EQ(made.userName, u"eva");
    EXPECT_EQ(failed.state, zn::TaskRunState::FinishedWithErrors);
    EXPECT_THAT(zn::toUtf8(failed.resultText), ::testing::HasSubstr("There is no task named 'Gone'"));
    const auto rows = schedules.list();
    EXPECT_EQ(rows[0].id, first);
    EXPECT_EQ(rows[0].lastDue, 1'029'600);
    EXPECT_EQ(rows[0].lastAt, 1'000'000 + 5 * 86400);
    EXPECT_EQ(rows[0].nextAt, 1'029'600 + 5 * 86400);
    EXPECT_EQ(rows[0].lastRun, made.id);
    EXPECT_EQ(rows[0].lastSentence, "");
    EXPECT_THAT(rows[1].lastSentence, ::testing::HasSubstr("There is no task named 'Gone'"));
    workerOnce(host);
    EXPECT_EQ(runs.list().size(), 2U);
}

TEST_F(ScheduleTest, ManyWorkersLaunchADueTimeOnce)
{
    define(u"Night", u"finish");
    for (int i = 0; i < 10; ++i)
        schedule(u"Night");
    // Another worker comes between the preparation and the run in the queue.
    here.clock.time += 86400;
    Side other(*this);
    other.clock.time = here.clock.time.load();
    const auto late = launchWhatIsDue(host, [&](LaunchFlow& flow) {
        EXPECT_TRUE(launchWhatIsDue(other.host, launchUnasked));
        return launchUnasked(flow);
    });
    EXPECT_FALSE(late);
    EXPECT_EQ(runs.list().size(), 1U);
    pid_t workers[3];
    for (pid_t& worker : workers) {
        worker = fork();
        if (worker != 0)
            continue;
        Side side(*this);
        side.clock.time = here.clock.time.load();
        _exit(workerOnce(side.host).others);
    }
    for (const pid_t worker : workers) {
        int status = 0;
        waitpid(worker, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(runs.list().size(), 10U);
}

} // namespace zn::arkin::test
