#include "platform/FileVersionBlock.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/LinuxProcesses.h"
#include "platform/linux/SqliteRegistry.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

ZN_FILE_VERSION(26, 3, 0, 0)

namespace zn {
namespace {

class ProcessesTest : public ::testing::Test {
protected:
    /// An executable script in the test's folder, as a backslash path.
    Text script(const std::string& name, const std::string& lines)
    {
        std::ofstream(folder / name) << "#!/bin/sh\n" << lines << '\n';
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
        return files.fromMachine(folder / name);
    }
    std::string waitForLine(const std::string& name)
    {
        for (int i = 0; i < 500; ++i) {
            std::string line;
            if (std::getline(std::ifstream(folder / name), line))
                return line;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return "(nothing)";
    }
    std::optional<std::uint32_t> waitForEnd(std::int32_t processId)
    {
        for (int i = 0; i < 500 && processes.exitCode(processId) == stillActive; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return processes.exitCode(processId);
    }

    test::TemporaryFolder folder;
    SqliteRegistry registry{folder / "registry.sqlite"};
    LinuxFileSystem files{registry};
    LinuxProcesses processes{files};
};

TEST_F(ProcessesTest, StartsAProgramWhosePathHasBlanksAndTellsItsExitCode)
{
    const Text program = script("two words.exe", "echo \"$#/$1/$2\" > \"$(dirname \"$0\")/seen\"; exit 7");
    const auto child = processes.launch(program + u" /R \"a b\"", 6);
    ASSERT_TRUE(child);
    EXPECT_EQ(waitForEnd(*child), 7U);
    EXPECT_FALSE(processes.open(*child));
    EXPECT_EQ(waitForLine("seen"), "2//R/a b");
    EXPECT_TRUE(processes.launch(u"\"" + program + u"\" /R", 6));
}

TEST_F(ProcessesTest, StartsNothingThatIsNoProgram)
{
    std::ofstream(folder / "text.exe") << "no program";
    EXPECT_FALSE(processes.launch(files.fromMachine(folder / "text.exe") + u" /B", 6));
    EXPECT_FALSE(processes.launch(files.fromMachine(folder / "missing.exe") + u" /B", 6));
    EXPECT_FALSE(processes.launch(u" /B", 6));
    EXPECT_FALSE(processes.launch(u"", 6));
    EXPECT_FALSE(processes.launch(u"\"unclosed", 6));
}

TEST_F(ProcessesTest, EndsAProgramWithTheWantedExitCodeAndAllThatItStarted)
{
    const Text program = script("stubborn.exe",
        "trap '' TERM INT HUP\nsleep 600 &\necho $! > \"$(dirname \"$0\")/grandchild\"\nwait\nsleep 600");
    const auto child = processes.launch(program, 6);
    ASSERT_TRUE(child);
    const pid_t grandchild = std::stoi(waitForLine("grandchild"));
    EXPECT_TRUE(processes.open(*child));
    EXPECT_GT(processes.workingSet(*child).value_or(0), 100000U);
    EXPECT_TRUE(processes.terminate(*child, 255));
    EXPECT_EQ(waitForEnd(*child), 255U);
    EXPECT_EQ(waitForEnd(grandchild), std::nullopt);
    EXPECT_FALSE(processes.terminate(*child, 1));
    EXPECT_FALSE(processes.workingSet(*child));
    EXPECT_EQ(processes.exitCode(*child), 255U);
}

TEST_F(ProcessesTest, WhatAProgramStartedEndsWithItWhereverItHasGone)
{
    const std::string leave = "echo $! > \"$(dirname \"$0\")/grandchild\"; mv \"$(dirname \"$0\")/grandchild\" "
                              "\"$(dirname \"$0\")/started\"\n";
    const std::string starts[] = {"sleep 600 &\n" + leave, "setsid sleep 600 &\n" + leave,
        "( setsid sh -c 'trap \"\" TERM HUP; sleep 600 & echo $! > '$(dirname \"$0\")'/started; wait' & )\nsleep "
        "0.2\n"};
    const std::pair<const char*, std::uint32_t> ends[]
        = {{"exit 3", 3}, {"kill -9 $$", 128 + SIGKILL}, {"sleep 600", 255}};
    for (const std::string& start : starts)
        for (const auto& [end, code] : ends) {
            const auto child = processes.launch(script("leaving.exe", start + end), 6);
            ASSERT_TRUE(child);
            const pid_t grandchild = std::stoi(waitForLine("started"));
            if (code == 255)
                processes.terminate(*child, 255);
            EXPECT_EQ(waitForEnd(*child), code) << start << end;
            EXPECT_EQ(processes.exitCode(grandchild), std::nullopt) << start << end;
            std::filesystem::remove(folder / "started");
        }
}

TEST_F(ProcessesTest, KnowsOtherProgramsAndEndsNoneOfThem)
{
    EXPECT_EQ(processes.exitCode(::getppid()), stillActive);
    EXPECT_FALSE(processes.terminate(::getppid(), 255));
    EXPECT_FALSE(processes.open(0));
    EXPECT_EQ(processes.exitCode(0x7FFFFFF0), std::nullopt);
}

TEST_F(ProcessesTest, AChildOutlivesTheThreadThatStartedItButNotTheProcess)
{
    script("sleeper.exe",
        "setsid sleep 600 & echo $! > \"$(dirname \"$0\")/away\"\necho $$ > \"$(dirname \"$0\")/id\"\nexec sleep 600");
    const pid_t parent = ::fork();
    if (parent == 0) {
        LinuxProcesses own(files);
        const Text program = files.fromMachine(folder / "sleeper.exe");
        std::filesystem::path thread;
        std::thread([&] {
            thread = "/proc/self/task/" + std::to_string(::gettid());
            own.launch(program, 6);
        }).join();
        while (std::filesystem::exists(thread))
            std::this_thread::yield();
        std::ofstream(folder / "alone") << "yes\n";
        ::pause();
    }
    const pid_t child = std::stoi(waitForLine("id"));
    EXPECT_EQ(waitForLine("alone"), "yes");
    EXPECT_EQ(processes.exitCode(child), stillActive);
    ::kill(parent, SIGKILL);
    ::waitpid(parent, nullptr, 0);
    EXPECT_EQ(waitForEnd(child), std::nullopt);
    EXPECT_EQ(waitForEnd(std::stoi(waitForLine("away"))), std::nullopt);
}

TEST_F(ProcessesTest, ReadsTheVersionOfAProgram)
{
    const auto version = processes.fileVersion(files.fromMachine("/proc/self/exe"));
    ASSERT_TRUE(version);
    EXPECT_EQ(version->major, 26);
    EXPECT_EQ(version->minor, 3);
    std::filesystem::copy_file("/proc/self/exe", folder / "cut.exe");
    std::filesystem::resize_file(folder / "cut.exe", std::filesystem::file_size(folder / "cut.exe") / 2);
    for (const std::filesystem::path& none : {folder / "cut.exe", folder / "none", std::filesystem::path("/bin/sh")})
        EXPECT_FALSE(processes.fileVersion(files.fromMachine(none))) << none;
}

} // namespace
} // namespace zn
