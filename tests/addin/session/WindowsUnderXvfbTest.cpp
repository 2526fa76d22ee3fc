#include "addin/session/Watcher.h"
#include "platform/Processes.h"
#include "tests/support/TestPlatform.h"
#include "tests/support/VirtualDisplay.h"

#include <fcntl.h>
#include <fstream>
#include <gmock/gmock.h>
#include <set>

namespace zn::test {
namespace {

using ::testing::UnorderedElementsAre;

class WindowsUnderXvfbTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(display.isThere()) << "Xvfb can't be started; install the package xvfb."; }

    /// Another process that opens windows and writes down what happens to them.
    std::int32_t openWindows(const std::string& record, const std::vector<std::string>& titles)
    {
        Text line = machine.machine.files().fromMachine(ZN_BIN_DIR "/test_windows") + u" "
            + toText((machine.folder / record).string());
        for (const std::string& title : titles)
            line += u" \"" + toText(title) + u"\"";
        const auto process = machine.machine.processes().launch(line, 6);
        EXPECT_TRUE(process);
        waitForLine(record, "ready");
        return process.value_or(0);
    }
    /// The different lines of a record but for its first one.
    std::set<std::string> lines(const std::string& record)
    {
        std::ifstream file(machine.folder / record);
        std::set<std::string> result;
        for (std::string line; std::getline(file, line);)
            result.insert(line);
        result.erase("ready");
        return result;
    }
    void waitForLine(const std::string& record, const std::string& wanted)
    {
        const auto seen = [&] {
            std::ifstream file(machine.folder / record);
            for (std::string line; std::getline(file, line);)
                if (line == wanted)
                    return true;
            return false;
        };
        for (int look = 0; look < 1000 && !seen(); ++look)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        EXPECT_TRUE(seen()) << wanted;
    }
    WindowHandle find(TextView title)
    {
        TopWindows& windows = machine.machine.windows();
        for (const WindowHandle window : windows.enumerate())
            if (windows.title(window, 259) == title)
                return window;
        return 0;
    }

    VirtualDisplay display;
    TestPlatform machine;
    Platform platform = machine.machine.with(machine.running);
};

TEST_F(WindowsUnderXvfbTest, AnswersTheDialogsOfOneProcessAndNoOtherWindow)
{
    const std::int32_t process = openWindows("own",
        {"Zentrel – größer", "A fault in Zentrel.exe", "Other", "Formtrace|Zentrel – größer", "Formtrace|Other",
            "Microsoft Visual Basic", "Microsoft Visual Basic [break] - m", "Microsoft Visual Basic - Macro1",
            "The Zentrel Task Scheduler", "zentrel"});
    openWindows("stranger", {"Zentrel 2018", "Microsoft Visual Basic [break] - m"});

    Watcher watcher(platform, [] {});
    watcher.setProcessId(process);
    watcher.start();
    // Windows are answered from the bottom of the stack last, and the first one is the lowest.
    waitForLine("own", "released 36 Zentrel – größer");
    watcher.stop();
    EXPECT_TRUE(watcher.taskSchedulerDialogSeen());

    // 36 and 9 are the key codes of Return and Escape on the server's keyboard.
    EXPECT_THAT(lines("own"),
        UnorderedElementsAre("key 36 Zentrel – größer", "released 36 Zentrel – größer", "key 36 A fault in Zentrel.exe",
            "released 36 A fault in Zentrel.exe", "key 9 Formtrace|Zentrel – größer",
            "released 9 Formtrace|Zentrel – größer", "key 36 Microsoft Visual Basic",
            "released 36 Microsoft Visual Basic", "close Microsoft Visual Basic [break] - m",
            "key 36 The Zentrel Task Scheduler", "released 36 The Zentrel Task Scheduler"));
    EXPECT_TRUE(lines("stranger").empty());
}

TEST_F(WindowsUnderXvfbTest, ShowsAndHidesAWindowAndLivesOnWithoutTheDisplay)
{
    const std::int32_t process = openWindows("own", {"Frame"});
    TopWindows& windows = machine.machine.windows();
    const WindowHandle frame = find(u"Frame");
    ASSERT_NE(frame, 0U);
    EXPECT_EQ(windows.processId(frame), process);
    EXPECT_EQ(windows.title(frame, 3), u"Fra");
    windows.show(frame, ShowState::Maximized);
    windows.show(frame, ShowState::Hide);
    waitForLine("own", "hidden Frame");
    EXPECT_THAT(lines("own"), UnorderedElementsAre("size 640x480 Frame", "hidden Frame"));

    // A window that has gone meanwhile is no failure, and neither is the end of the whole display.
    machine.machine.processes().terminate(process, 0);
    for (int look = 0; look < 500 && find(u"Frame") != 0; ++look)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    windows.postKey(frame, keyEnter);
    windows.postClose(frame);
    EXPECT_EQ(windows.title(frame, 259), u"");
    display.end();
    EXPECT_TRUE(windows.enumerate().empty());
    windows.postKey(frame, keyEnter);
    EXPECT_EQ(windows.processId(frame), 0);
}

} // namespace
} // namespace zn::test
