#include "arkin/tasks/WorkerStore.h"

#include "arkin/tasks/Worker.h"
#include "arkin/tasks/WorkerStop.h"
#include "tests/arkin/tasks/TaskFixture.h"

#include <gmock/gmock.h>

namespace zn::arkin::test {

class WorkerStoreTest : public TaskFixture {
protected:
    /// "1 anna waiting", in the order of the list.
    std::vector<std::string> shown()
    {
        std::vector<std::string> lines;
        for (const WorkerInfo& worker : workers.list())
            lines.push_back(std::to_string(worker.id) + " " + zn::toUtf8(worker.userName) + " "
                + zn::toUtf8(workerStateText(worker, here.clock.now())));
        return lines;
    }
    using Lines = std::vector<std::string>;

    WorkerStore workers{here.database, 1};
    const ProcessMark elsewhere{u"other", 77, 5};
};

TEST_F(WorkerStoreTest, TellsWhoIsThereAndWhoWentAway)
{
    auto& clock = here.clock;
    workers.enter(u"anna", thisProcess(), clock.now());
    const auto far = workers.enter(u"ben", elsewhere, clock.now());
    const auto dead = workers.enter(u"eva", {thisProcess().host, thisProcess().process, 1}, clock.now());
    EXPECT_EQ(shown(), Lines({"1 anna waiting", "2 ben waiting", "3 eva gone"}));
    clock.time += heartbeatLimit + 1;
    EXPECT_EQ(shown(), Lines({"1 anna gone", "2 ben gone", "3 eva gone"}));
    EXPECT_TRUE(workers.beat(1, clock.now(), clock.now()));
    EXPECT_EQ(shown().front(), "1 anna waiting");
    workers.enter(u"eva", elsewhere, clock.now());
    EXPECT_EQ(shown(), Lines({"1 anna waiting", "2 ben gone", "4 eva waiting"})) << "the process is gone for good";
    EXPECT_FALSE(workers.beat(dead, 0, clock.now()));
    clock.time += 86401;
    workers.enter(u"eva", elsewhere, clock.now());
    EXPECT_EQ(shown(), Lines({"5 eva waiting"})) << "nothing for a day";
    EXPECT_THAT(sentenceOf([&] { workers.get(far); }), ::testing::HasSubstr("There is no worker 2"));
}

TEST_F(WorkerStoreTest, SignsOfLifeWakeNobodyWhoWatchesForChanges)
{
    workers.enter(u"anna", thisProcess(), 1);
    const auto before = here.database.turn();
    workers.beat(1, 1, 20);
    EXPECT_EQ(here.database.turn(), before);
    EXPECT_EQ(workers.get(1).heardAt, 20);
    workers.wantStop(1);
    EXPECT_GT(here.database.turn(), before);
}

TEST_F(WorkerStoreTest, OneAtWorkIsHeardOfByItsRun)
{
    const auto id = launch(u"finish").id;
    launch(u"finish");
    workers.enter(u"anna", elsewhere, here.clock.now());
    const auto claim = RunClaim::takeNext(runs, elsewhere, here.clock.now());
    RunClaim::takeNext(runs, {u"third", 8, 9}, here.clock.now());
    here.clock.time += heartbeatLimit + 1;
    claim->beat(here.database, here.clock.now());
    EXPECT_EQ(shown(), Lines({"1 anna at work", "0 anna gone"}));
    EXPECT_EQ(workers.get(1).run->id, id);
    EXPECT_THAT(sentenceOf([&] { stopWorker(host, 1, StopWhen::AtOnce); }),
        ::testing::StartsWith("Worker 1 (process 77 on other) runs on another machine: "));
    stopWorker(host, 1, StopWhen::AfterRun);
    EXPECT_EQ(shown().front(), "1 anna stops after its run");
    EXPECT_EQ(runs.get(id).state, TaskRunState::Running);
    stopWorker(host, 1, StopWhen::AfterFile);
    EXPECT_EQ(runs.get(id).state, TaskRunState::CancelRequested);
}

TEST_F(WorkerStoreTest, AWorkerEndsBehindItsRunWhenItIsAskedTo)
{
    launch(u"finish");
    const auto left = launch(u"finish").id;
    const std::atomic<bool> interrupted = false;
    const Worker::Listener listener{[&](const RunInfo&) {
                                        EXPECT_EQ(shown(), Lines({"1 anna at work"}));
                                        stopWorker(host, 1, StopWhen::AfterRun);
                                    },
        {}, [](const RunInfo&) {}, [](const RunInfo&, const auto&) {}};
    const auto tally = Worker(host, listener, interrupted).work(false);
    EXPECT_TRUE(tally.asked);
    EXPECT_EQ(tally.finished, 1);
    EXPECT_EQ(runs.get(left).state, TaskRunState::Queued);
    EXPECT_EQ(shown(), Lines());
}

} // namespace zn::arkin::test
