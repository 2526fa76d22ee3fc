#include "arkin/tasks/RunPaths.h"

#include "arkin/store/DeleteFile.h"
#include "tests/arkin/VaultFixture.h"

#include <functional>
#include <gmock/gmock.h>
#include <soci/soci.h>

namespace zn::arkin::test {

using zn::TaskRunState;

TEST(PathIndexTest, RunsMeetWhereOneWritesWhatTheOtherNeeds)
{
    const KeptPath kept[]
        = {{"z:/out/a_", ".stl", 0}, {"z:/out/b", "", 0}, {"z:/in/a.step", "", 3}, {"z:/in/b.step", "", 1}};
    const struct {
        KeptPath path;
        bool meets = false;
    } rows[] = {
        {{"z:/out/a_small.stl", ".stl", 0}, true}, // a file of the other's names
        {{"z:/out/a_", ".step", 0}, false},        // another format
        {{"z:/out/", ".stl", 0}, true},            // names that may be the other's
        {{"z:/out/", ".step", 0}, true},           // one of the other's names has any ending
        {{"z:/out/c_", ".stl", 0}, false},
        {{"z:/in/a.step", ".step", 0}, true}, // the other reads it
        {{"z:/in/", ".stl", 0}, false},
        {{"z:/in/a.step", "", 3}, false}, // the same copy
        {{"z:/in/a.step", "", 2}, true},
        {{"z:/in/a.st", "", 2}, false},
        {{"z:/out/a_small.stl", "", 1}, true}, // the other writes it
        {{"z:/out/a_small.step", "", 1}, false},
    };
    const PathIndex index({std::begin(kept), std::end(kept)});
    for (const auto& row : rows) {
        EXPECT_EQ(index.find(row.path) != nullptr, row.meets) << row.path.beginning << row.path.ending;
        const auto meetsOne = [&](const KeptPath& each) { return meet(row.path, each); };
        EXPECT_EQ(std::any_of(std::begin(kept), std::end(kept), meetsOne), row.meets) << row.path.beginning;
    }
}

/// Something happens whenever somebody waits.
class EventfulClock : public zn::Clock {
public:
    std::int64_t now() override { return 1'000'000; }
    void sleep(std::chrono::milliseconds) override { meanwhile(); }
    bool wait(zn::WaitEvent&, std::chrono::milliseconds) override { return false; }

    std::function<void()> meanwhile;
};

class RunPathsTest : public VaultFixture {
protected:
    RunPathsTest()
        : runs(test.store.database(), test.vault.info().id)
    {
    }

    std::int32_t launch()
    {
        TaskDefinition task;
        task.name = u"To STL";
        return runs.enqueue(task, {newGuid(), u"anna", {}, {}}, clock.now());
    }
    RunClaim take() { return RunClaim::takeNext(runs, thisProcess(), clock.now()).value(); }
    static void end(const RunClaim& claim) { claim.finish(TaskRunState::Finished, 0, u"", {}, 1'000'001); }
    /// The worker's process is gone: nobody has its number with this mark.
    void loseWorker(std::int32_t run)
    {
        test.store.database().session() << "UPDATE task_runs SET owner_mark = 1 WHERE id = :r", soci::use(run);
    }

    EventfulClock clock;
    RoomWait room{clock, nullptr};
    RunStore runs;
    std::vector<std::string> told;
    RunPaths::WaitWatcher watcher = [this](const std::string& sentence) { told.push_back(sentence); };
};

TEST_F(RunPathsTest, TheLaterRunWaitsUntilTheOtherHasEnded)
{
    launch();
    launch();
    const RunClaim first = take(), second = take();
    RunPaths one(first, clock, test.store.files(), room, watcher),
        two(second, clock, test.store.files(), room, watcher);
    const LocalCopyUse copy{u"Z:\\V\\a.step", 1}, older{u"Z:\\V\\A.step", 2};
    one.announce({{u"Z:\\V\\Out\\a_", u".stl"}});
    EXPECT_TRUE(one.keepLocalCopies({&copy, 1}));
    EXPECT_TRUE(two.keepLocalCopies({&copy, 1}));
    two.keepOutput(u"Z:\\V\\Out\\a_Red.step");
    EXPECT_TRUE(told.empty());

    int looks = 0;
    clock.meanwhile = [&] {
        if (++looks == 3)
            end(first);
    };
    two.keepOutput(u"Z:\\V\\OUT\\a_Red.stl");
    EXPECT_EQ(looks, 3);
    EXPECT_THAT(told, ::testing::ElementsAre("Waits for run 1 of 'To STL', which works with /v/out/a_…", ""));

    launch();
    RunPaths three(take(), clock, test.store.files(), room, watcher);
    clock.meanwhile = [&] { loseWorker(2); };
    EXPECT_FALSE(three.keepLocalCopies({&older, 1})); // it had to wait, and a worker that is gone keeps nothing
    EXPECT_TRUE(three.keepLocalCopies({&older, 1}));

    launch();
    RunPaths four(RunClaim::take(runs, 4, thisProcess(), clock.now()), clock, test.store.files(), room, watcher);
    clock.meanwhile = [&] { test.store.database().session() << "UPDATE task_runs SET state = 6 WHERE id = 4"; };
    EXPECT_EQ(sentenceOf([&] { four.keepOutput(older.path); }), "The run was cancelled while it waited for run 3.");
}

TEST_F(RunPathsTest, RunsDoNotWaitForEachOther)
{
    launch();
    launch();
    const RunClaim first = take(), second = take();
    RunPaths one(first, clock, test.store.files(), room, watcher),
        two(second, clock, test.store.files(), room, watcher);
    one.keepOutput(u"Z:\\x");
    two.keepOutput(u"Z:\\y");
    clock.meanwhile = [&] {
        EXPECT_EQ(sentenceOf([&] { two.keepOutput(u"Z:\\X"); }),
            "Run 1 works with /x and waits for a file of this run. Launch the task again when that run has ended.");
        end(second);
    };
    one.keepOutput(u"Z:\\y");
    EXPECT_EQ(told.size(), 2u);
}

TEST_F(RunPathsTest, AnotherRunsCheckOutIsAnothers)
{
    const Place place = test.addReleased("a.stl", "a");
    launch();
    launch();
    RunPaths one(take(), clock, test.store.files(), room, watcher),
        two(take(), clock, test.store.files(), room, watcher);
    test.vault.actFor(&one);
    checkOut(test.vault, place);
    for (ActingRun* other : {static_cast<ActingRun*>(&two), static_cast<ActingRun*>(nullptr)}) {
        test.vault.actFor(other);
        EXPECT_THAT(sentenceOf([&] { undoCheckOut(test.vault, place.fileId); }), ::testing::EndsWith(", for run 1."));
        EXPECT_THAT(sentenceOf([&] { test.checkInAll({place}); }), ::testing::EndsWith(", for run 1."));
    }
    test.vault.actFor(&one);
    EXPECT_EQ(test.checkInAll({place}).size(), 1u);
}

TEST_F(RunPathsTest, ALostRunGivesItsFilesBackAndItsLateWorkerWritesNothing)
{
    const Place place = test.addReleased("a.stl", "first"), other = test.addReleased("b.stl", "b");
    launch();
    RunPaths late(take(), clock, test.store.files(), room, watcher);
    test.vault.actFor(&late);
    checkOut(test.vault, place);
    writeFile(test.local("a.stl"), "of the run that dies");
    test.add("new.stl", "new");
    late.keepOutput(test.path("a.stl"));
    loseWorker(1);

    test.vault.actFor(nullptr); // here the successor has the same connection
    const RunClaim claim = take();
    EXPECT_EQ(claim.run().claim, 3); // back to the queue, and taken
    RunPaths(claim, clock, test.store.files(), room, watcher).keepOutput(test.path("a.stl"));
    EXPECT_TRUE(checkOutsOfRun(test.vault, 1).empty());
    EXPECT_FALSE(test.vault.find(test.path("new.stl")));
    test.vault.actFor(&late);
    const std::function<void()> writes[] = {
        [&] { checkOut(test.vault, other); },
        [&] { deleteFile(test.vault, other); },
        [&] { test.checkInAll({place}); },
        [&] { test.vault.createFolder(test.path("late")); },
        [&] { test.vault.setRevision(other.fileId, u"B"); },
        [&] { test.add("c.stl", "c"); },
        [&] { late.keepOutput(u"Z:\\x"); },
    };
    for (const auto& write : writes)
        EXPECT_THAT(sentenceOf(write), ::testing::HasSubstr("was taken over by another worker"));

    test.vault.actFor(nullptr);
    EXPECT_EQ(readFile(test.local("a.stl")), "of the run that dies");
    putBackCopies(test.vault);
    EXPECT_EQ(readFile(test.local("a.stl")), "first");
    EXPECT_TRUE(isReadOnly(test.local("a.stl")));
    EXPECT_EQ(readFile(test.local("new.stl")), "new");
    putBackCopies(test.vault); // nothing is left to do
    checkOut(test.vault, place);
}

TEST_F(RunPathsTest, WhatAPersonAskedOfALostRunHolds)
{
    const struct {
        TaskRunState asked, becomes;
    } rows[] = {
        {TaskRunState::CancelRequested, TaskRunState::Cancelled},
        {TaskRunState::SuspendRequested, TaskRunState::Suspended},
        {TaskRunState::Suspended, TaskRunState::Suspended},
    };
    const Place place = test.addReleased("a.stl", "a");
    for (const auto& row : rows) {
        const auto id = launch();
        RunPaths paths(take(), clock, test.store.files(), room, watcher);
        test.vault.actFor(&paths);
        checkOut(test.vault, place);
        test.vault.actFor(nullptr);
        const auto state = static_cast<std::int32_t>(row.asked);
        test.store.database().session() << "UPDATE task_runs SET state = :s WHERE id = :r", soci::use(state),
            soci::use(id);
        loseWorker(id);
        EXPECT_FALSE(RunClaim::takeNext(runs, thisProcess(), clock.now()));
        EXPECT_EQ(runs.get(id).state, row.becomes);
        EXPECT_FALSE(runs.get(id).taken());
        EXPECT_TRUE(checkOutsOfRun(test.vault, id).empty());
    }
}

TEST_F(RunPathsTest, AFullDatabaseIsWaitedFor)
{
    launch();
    const RunClaim claim = take();
    auto& session = test.store.database().session();
    int pages = 0, tries = 0;
    session << "PRAGMA page_count", soci::into(pages);
    session << "PRAGMA max_page_count = " << pages;
    clock.meanwhile = [&] {
        if (++tries == 2)
            session << "PRAGMA max_page_count = 100000";
    };
    const zn::Text sentence(50'000, u'x');
    room.patiently([&] { claim.addMessage(u"", sentence); });
    EXPECT_EQ(tries, 2);
    EXPECT_EQ(runs.messages(1).at(0).sentence, sentence);

    session << "PRAGMA max_page_count = 1";
    const std::atomic<bool> interrupted = true;
    RoomWait impatient(clock, &interrupted);
    EXPECT_THROW(impatient.patiently([&] { claim.addMessage(u"", sentence); }), soci::soci_error);
    EXPECT_EQ(tries, 2);
}

TEST_F(RunPathsTest, ARunThatEndsItsWorkersIsGivenUp)
{
    launch();
    for (int i = 0; i < RunClaim::mostLosses; ++i) {
        ASSERT_EQ(take().run().id, 1);
        loseWorker(1);
    }
    EXPECT_FALSE(RunClaim::takeNext(runs, thisProcess(), clock.now()));
    EXPECT_EQ(runs.get(1).state, TaskRunState::FinishedWithErrors);
    EXPECT_EQ(runs.get(1).endedAt, clock.now());
    EXPECT_THAT(zn::toUtf8(runs.get(1).resultText), ::testing::StartsWith("The run was given up: 3 workers went away"));
}

} // namespace zn::arkin::test
