#include "addin/session/Watcher.h"
#include "tests/addin/session/SessionFixture.h"

namespace zn::test {
namespace {

TEST(DialogAnswerTest, GoesByTheFirstRowThatFits)
{
    using enum DialogAnswer;
    const std::pair<const char16_t*, DialogAnswer> cases[] = {
        {u"Zentrel", Enter},
        {u"Zentrel Task Scheduler", Enter},
        {u"zentrel 2018", None},
        {u"An error in Zentrel.exe has come up", Enter},
        {u"An error in ZENTREL.EXE has come up", None},
        {u"Formtrace", EscapeIfOwnedByApplication},
        {u"Formtrace 2", None},
        {u"Microsoft Visual Basic", Enter},
        {u"Microsoft Visual Basic [break] - Macro1", Close},
        {u"Microsoft Visual Basic - Macro1", None},
        {u"My Zentrel Task Scheduler", EnterAsSchedulerDialog},
        {u"My Zentrel Task Scheduler.", None},
        {u"", None},
    };
    for (const auto& [title, answer] : cases)
        EXPECT_EQ(answerTo(title), answer) << toUtf8(title);
}

/// Lets the watch run round by round: the n-th wait may set the stop.
class CountingClock : public QuickClock {
public:
    bool wait(WaitEvent& event, std::chrono::milliseconds duration) override
    {
        const int round = rounds + (duration.count() > 0 ? 1 : 0);
        if (round == stopInRound)
            event.set();
        // Counted once the wait is over, so that whoever sees the last round can't stop it any more.
        const bool stopped = event.waitFor(std::chrono::milliseconds(0));
        rounds = round;
        return stopped;
    }

    std::atomic<int> rounds = 0;
    int stopInRound = -1;
};

class WatcherTest : public ::testing::Test {
protected:
    Platform ports()
    {
        const Platform real = machine.ports();
        return {real.registry, real.files, real.processes, real.runningObjects, windows, real.pipe, clock,
            real.printers, real.products};
    }
    void watchToTheEnd(int rounds)
    {
        watcher.start();
        for (int look = 0; look < 2000 && clock.rounds < rounds; ++look)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        watcher.stop();
    }

    TestPlatform machine;
    FakeWindows windows;
    CountingClock clock;
    std::atomic<int> closings = 0;
    Platform platform = ports();
    Watcher watcher{platform, [this] { ++closings; }};
};

TEST_F(WatcherTest, EndsAfterHalfAnHourWithoutTouchingTheApplication)
{
    watcher.setProcessId(7);
    watchToTheEnd(1800);
    EXPECT_EQ(clock.rounds, 1800);
    EXPECT_EQ(closings, 0);
    windows.open(1, {7, u"Zentrel", 0});
    EXPECT_TRUE(windows.answers.empty());
}

TEST_F(WatcherTest, ClosesTheApplicationOnlyWhenStoppedInTheLastRound)
{
    clock.stopInRound = 1799;
    watchToTheEnd(1799);
    EXPECT_EQ(closings, 0);
    clock.rounds = 0;
    clock.stopInRound = 1800;
    watchToTheEnd(1800);
    EXPECT_EQ(closings, 1);
}

TEST_F(WatcherTest, LooksAfterNoWindowThatTellsNoProcess)
{
    windows.open(1, {0, u"Zentrel", 0});
    watcher.setProcessId(0);
    clock.stopInRound = 3;
    watchToTheEnd(3);
    EXPECT_TRUE(windows.answers.empty());
}

} // namespace
} // namespace zn::test
