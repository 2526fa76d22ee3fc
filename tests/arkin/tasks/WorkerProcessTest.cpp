#include "tests/arkin/tasks/TaskFixture.h"

#include "arkin/tasks/RunRequests.h"
#include "arkin/tasks/Worker.h"

#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <set>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace zn::arkin::test {

using zn::TaskRunState;
using zn::Value;

/// Workers as processes of their own beside the test's.
class WorkerProcessTest : public TaskFixture {
protected:
    pid_t startWorker()
    {
        const auto child = fork();
        if (child != 0)
            return child;
        const std::atomic<bool> interrupted = false;
        Side side(*this);
        Worker::Listener quiet{[](const RunInfo&) {}, {}, [](const RunInfo&) {}, [](const RunInfo&, const auto&) {}};
        _exit(Worker(side.host, quiet, interrupted).work(true).others);
    }

    static int exitCode(pid_t child)
    {
        int status = 0;
        waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

    static void kill(pid_t child)
    {
        ::kill(child, SIGKILL);
        EXPECT_EQ(exitCode(child), -SIGKILL);
    }
};

TEST_F(WorkerProcessTest, TwoWorkersShareTheQueueAndRunEachRunOnce)
{
    const auto mark = (folder / "mark").string();
    std::multiset<std::string> wanted;
    for (int i = 0; i < 20; ++i) {
        launch(u"finish", {{u"Mark", Value(zn::toText(mark))}, {u"Number", Value(zn::numberText(i))}});
        wanted.insert(std::to_string(i));
    }
    const pid_t workers[] = {startWorker(), startWorker()};
    for (const auto worker : workers)
        EXPECT_EQ(exitCode(worker), 0);
    std::multiset<std::string> worked;
    std::ifstream lines(mark);
    for (std::string line; std::getline(lines, line);)
        worked.insert(line);
    EXPECT_EQ(worked, wanted);
    for (const auto& run : runs.list())
        EXPECT_EQ(run.claim, 1);
}

TEST_F(WorkerProcessTest, ARunOfAKilledWorkerIsSeenAndStartedAgain)
{
    const auto mark = folder / "mark";
    const auto id = launch(u"hang once", {{u"Mark", Value(zn::toText(mark.string()))}}).id;
    const auto worker = startWorker();
    while (!std::filesystem::exists(mark))
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    const auto now = here.clock.now();
    EXPECT_FALSE(workerDied(runs.get(id), now));
    EXPECT_THAT(sentenceOf([&] { RunClaim::take(runs, id, thisProcess(), now); }),
        ::testing::HasSubstr("is being worked on by process " + std::to_string(worker)));
    kill(worker);
    EXPECT_EQ(stateText(runs.get(id), now), u"worker died (running)");
    EXPECT_THROW(requestSuspend(runs, id, now), zn::StatusError);

    const auto run = TaskRunner(host).run(RunClaim::take(runs, id, thisProcess(), now));
    EXPECT_EQ(run.state, TaskRunState::Finished);
    EXPECT_EQ(run.resultText, u"second worker");
    EXPECT_EQ(run.claim, 2);
    EXPECT_EQ(run.progressText, u"");
}

TEST_F(WorkerProcessTest, ALostRunGoesBackToTheQueueOrIsCancelled)
{
    for (const bool resume : {true, false}) {
        const auto mark = folder / (resume ? "mark" : "other mark");
        const auto id = launch(u"hang once", {{u"Mark", Value(zn::toText(mark.string()))}}).id;
        const auto worker = startWorker();
        while (!std::filesystem::exists(mark))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        kill(worker);
        if (resume)
            requestResume(runs, id, here.clock.now());
        else
            requestCancel(runs, id, here.clock.now());
        EXPECT_EQ(exitCode(startWorker()), 0);
        EXPECT_THAT(zn::toUtf8(runs.get(id).resultText),
            ::testing::StartsWith(resume ? "second worker" : "The run was cancelled after its worker had died."));
    }
}

TEST_F(WorkerProcessTest, ALateWorkerCannotOverwriteItsSuccessor)
{
    const auto id = launch(u"finish").id;
    const auto late = RunClaim::take(runs, id, thisProcess(), here.clock.now());
    here.clock.time += heartbeatLimit + 1;
    const auto successor = RunClaim::take(runs, id, thisProcess(), here.clock.now());
    successor.finish(TaskRunState::Finished, 0, u"successor", {{1, 1, 2, 3}}, here.clock.now());
    const std::function<void()> writes[] = {
        [&] { late.writeProgress(9, 9, u"late"); },
        [&] { late.writeVariable(u"Own", Value(u"late")); },
        [&] { late.finish(TaskRunState::FinishedWithErrors, zn::E_FAIL, u"late", {}, 0); },
        [&] {
            const TaskRunState from[] = {TaskRunState::Finished};
            late.changeState(from, TaskRunState::Running);
        },
    };
    for (const auto& write : writes)
        EXPECT_THAT(sentenceOf(write), ::testing::HasSubstr("was taken over by another worker"));
    EXPECT_FALSE(late.beat(here.database, here.clock.now()));
    const auto run = runs.get(id);
    EXPECT_EQ(run.resultText, u"successor");
    EXPECT_EQ(run.state, TaskRunState::Finished);
    EXPECT_EQ(run.progressTotal, 0);
    EXPECT_EQ(runs.documents(id).size(), 1U);
    EXPECT_EQ(runs.variables(id).at(u"Own"), Value(u"from the launch"));
}

TEST_F(WorkerProcessTest, SuspendResumeAndCancelFromAnotherProcess)
{
    const auto id = launch(u"work").id;
    const auto worker = startWorker();
    awaitState(id, TaskRunState::Running);
    const auto now = here.clock.now();
    // A request that is taken back at once leaves the run going.
    requestSuspend(runs, id, now);
    requestResume(runs, id, now);
    awaitState(id, TaskRunState::Running);
    requestSuspend(runs, id, now);
    awaitState(id, TaskRunState::Suspended);
    requestResume(runs, id, now);
    requestSuspend(runs, id, now);
    awaitState(id, TaskRunState::Suspended);
    requestResume(runs, id, now);
    awaitState(id, TaskRunState::Running);
    requestSuspend(runs, id, now);
    awaitState(id, TaskRunState::Suspended);
    requestCancel(runs, id, now);
    EXPECT_EQ(exitCode(worker), 1);
    EXPECT_EQ(runs.get(id).state, TaskRunState::Cancelled);
}

} // namespace zn::arkin::test
