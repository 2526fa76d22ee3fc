#include "tests/arkin/tasks/TaskFixture.h"

#include "arkin/tasks/AddInModule.h"
#include "arkin/tasks/Launch.h"
#include "arkin/tasks/Worker.h"
#include "contracts/classes/ClassLibrary.h"

#include <gmock/gmock.h>

#include <fstream>

namespace zn::arkin::test {

using ::testing::HasSubstr;
using zn::TaskRunState;
using zn::Value;

class RunTest : public TaskFixture {
protected:
    RunInfo runNow(std::int32_t id, const RunWatcher& watcher = {})
    {
        return TaskRunner(host, watcher).run(RunClaim::take(runs, id, thisProcess(), here.clock.now()));
    }
};

TEST_F(RunTest, ReportsWhatTheAddInReports)
{
    const auto task = define(u"Convert", u"finish", {{u"Mark", Value(u"")}, {u"Width", Value(2.1F)}});
    const auto id = launchTask(host, task, oneFile()).id;
    // A run keeps the variables that its task had at the launch.
    tasks.change(task.id, {{{u"Plan", Value(u"errors")}}, {}, u"anna", 1});
    std::vector<std::string> seen;
    const auto run = runNow(id, [&](const RunProgress& progress) {
        seen.push_back(
            std::to_string(progress.position) + "/" + std::to_string(progress.total) + " " + zn::toUtf8(progress.text));
    });
    EXPECT_EQ(run.state, TaskRunState::Finished);
    EXPECT_EQ(run.resultText, u"Convert");
    EXPECT_EQ(run.userName, u"anna");
    EXPECT_EQ(seen, (std::vector<std::string>{"0/1 Z:\\Vault\\a.step", "0/1 Z:\\Vault\\a.step"}));
    const auto variables = runs.variables(id);
    EXPECT_EQ(variables.at(u"Own"), Value(u"from the launch"));
    EXPECT_EQ(variables.at(u"Seen"), Value(u"Z:\\Vault\\a.step|Red"));
    EXPECT_EQ(variables.at(u"Width"), Value(2.1F));
    EXPECT_EQ(runs.documents(id), (std::vector<zn::ArkTaskResultDoc>{{7, 1, 8, 9}, {10, 1, 11, -1}}));
    EXPECT_FALSE(tasks.get(u"Convert").variables.contains(u"Own"));
}

TEST_F(RunTest, KeepsWhatItSaysAboutFilesUntilItIsTakenAgain)
{
    const auto now = here.clock.now();
    const auto id = launch(u"finish").id;
    const ProcessMark gone{thisProcess().host, 0x7FFFFFF0, 1};
    const auto early = RunClaim::take(runs, id, gone, now);
    early.addMessage(u"Z:\\Vault\\a.step", u"Told by a worker that died.");
    early.writeOutputs(7, 7);

    StopSignal cancelled;
    RoomWait room(here.clock, nullptr);
    RunInstance instance(RunClaim::take(runs, id, thisProcess(), now), {}, here.clock, here.files, room, cancelled);
    EXPECT_TRUE(runs.messages(id).empty());
    EXPECT_THROW(early.addMessage(u"", u"Too late."), zn::StatusError);
    EXPECT_EQ(instance.AddMessage(u"Z:\\Vault\\a.step", u"\"a.step\" is gone."), zn::S_OK);
    EXPECT_EQ(instance.AddMessage(u"", u"The rest went well."), zn::S_OK);
    EXPECT_EQ(instance.SetOutputs(40, 3), zn::S_OK);
    EXPECT_EQ(stateText(runs.get(id), now), u"running");
    EXPECT_EQ(instance.SetStatus(TaskRunState::Finished, zn::S_OK, {}, {}), zn::S_OK);

    const auto run = runs.get(id);
    EXPECT_EQ(stateText(run, now), u"finished, 3 of 40 failed");
    EXPECT_FALSE(run.wentWell());
    const auto messages = runs.messages(id);
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0].path, u"Z:\\Vault\\a.step");
    EXPECT_EQ(messages[0].sentence, u"\"a.step\" is gone.");
    EXPECT_EQ(messages[1].sentence, u"The rest went well.");
}

TEST_F(RunTest, SettlesRunsThatEndWithoutAReport)
{
    const struct {
        const char16_t* plan;
        zn::Status code;
        const char16_t* text;
    } rows[] = {
        {u"errors", zn::E_FAIL, u"It went wrong."},
        {u"fail", zn::E_ACCESSDENIED, u"The add-in ended with a failure: status 0x80070005."},
        {u"silent", zn::E_UNEXPECTED, u"The add-in ended without reporting how the run went."},
    };
    for (const auto& row : rows) {
        const auto run = runNow(launch(row.plan).id);
        EXPECT_EQ(run.state, TaskRunState::FinishedWithErrors);
        EXPECT_EQ(run.resultCode, row.code);
        EXPECT_EQ(run.resultText, row.text);
    }
}

TEST_F(RunTest, LeavesNothingOfALaunchThatFails)
{
    const struct {
        const char16_t* launch;
        const char* sentence;
    } rows[] = {
        {u"ask", "leaves settings to the user ('Conversion Settings') and there is no window to ask in"},
        {u"stop", "wasn't launched: Nothing is selected."},
        {u"fail", "couldn't be launched: status 0x8000FFFF."},
    };
    for (const auto& row : rows) {
        const Variables variables{{u"Launch", Value(row.launch)}};
        EXPECT_THAT(sentenceOf([&] { launch(u"finish", variables); }), HasSubstr(row.sentence));
    }
    EXPECT_TRUE(runs.list().empty());
}

TEST_F(RunTest, SaysWhyAnAddInIsNotLoaded)
{
    const struct {
        const char16_t* programId;
        const char* sentence;
    } rows[] = {
        {u"Test.Nobody",
            "The add-in 'Test.Nobody' isn't registered here; 'arkin addin register LIBRARY' registers it."},
        {u"Test.Gone", "The library /nowhere/gone.so isn't there; build it or register it anew."},
        {u"Test.Unknown", "doesn't offer the class {UNKNOWN} (0x80040111)"},
        {u"Test.Stranger", "is refused: its object isn't a vault add-in."},
    };
    for (const auto& row : rows)
        EXPECT_THAT(sentenceOf([&] { loadAddIn(here.registry, here.files, row.programId); }), HasSubstr(row.sentence));
    const std::filesystem::path text = folder / "text.so";
    std::ofstream(text) << "no library";
    EXPECT_THAT(sentenceOf([&] { zn::ClassLibrary module(text); }), HasSubstr("can't be loaded"));
    EXPECT_THAT(sentenceOf([] { zn::ClassLibrary(ZN_BIN_DIR "/libTestAddIn.so").unregisterServer(); }),
        HasSubstr("couldn't be unregistered (0x80070005)"));
}

TEST_F(RunTest, AnInterruptedWorkerCancelsItsRunAndStops)
{
    launch(u"work");
    const auto waiting = launch(u"finish");
    std::atomic<bool> interrupted = false;
    std::vector<RunInfo> ended;
    Worker::Listener listener;
    listener.started = [](const RunInfo&) {};
    listener.progress = [&](const RunProgress&) { interrupted = true; };
    listener.ended = [&](const RunInfo& run) { ended.push_back(run); };
    const auto tally = Worker(host, listener, interrupted).work(true);
    EXPECT_EQ(tally.finished, 0);
    ASSERT_EQ(ended.size(), 1U);
    EXPECT_EQ(ended[0].state, TaskRunState::Cancelled);
    EXPECT_EQ(ended[0].resultText, u"The run was cancelled.");
    EXPECT_EQ(runs.get(waiting.id).state, TaskRunState::Queued);
}

TEST_F(RunTest, AWorkerGoesOnAfterARunThatAnotherTookOverAndPassesOtherFailuresOn)
{
    const auto taken = launch(u"finish").id;
    launch(u"errors");
    launch(u"finish");
    std::string lost;
    Worker::Listener listener;
    listener.started = [&](const RunInfo& run) {
        if (run.id != taken)
            return;
        here.clock.time += heartbeatLimit + 1;
        RunClaim::take(runs, taken, thisProcess(), here.clock.now());
    };
    listener.progress = [](const RunProgress&) {};
    listener.ended = [](const RunInfo&) {};
    listener.lost = [&](const RunInfo& run, const std::string& why) { lost += std::to_string(run.id) + ": " + why; };
    const std::atomic<bool> interrupted = false;
    const auto tally = Worker(host, listener, interrupted).work(true);
    EXPECT_EQ(tally.finished, 1);
    EXPECT_EQ(tally.others, 2);
    EXPECT_THAT(lost, ::testing::AllOf(::testing::StartsWith(std::to_string(taken) + ": "), HasSubstr("taken over")));

    launch(u"finish");
    listener.progress = [](const RunProgress&) { throw zn::StatusError(zn::E_ACCESSDENIED, "The screen is gone."); };
    listener.ended = [](const RunInfo&) { throw zn::StatusError(zn::E_ACCESSDENIED, "The screen is gone."); };
    EXPECT_EQ(sentenceOf([&] { Worker(host, listener, interrupted).work(true); }), "The screen is gone.");
}

} // namespace zn::arkin::test
