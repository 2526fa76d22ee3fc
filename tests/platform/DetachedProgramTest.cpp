#include "platform/linux/DetachedProgram.h"

#include "tests/support/Failures.h"
#include "tests/support/Files.h"
#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace zn::test {

TEST(DetachedProgramTest, IsNobodysChildAndWritesIntoItsLog)
{
    const TemporaryFolder folder;
    const auto log = folder / "log";
    const auto process = startDetached({"/bin/sh", "-c", "ps -o pid=,ppid=,sid= -p $$; pwd; echo ready >&2"}, log);
    while (!std::filesystem::exists(log) || readFile(log).find("ready") == std::string::npos)
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    int pid = 0, parent = 0, session = 0;
    const auto text = readFile(log);
    std::istringstream words(text);
    ASSERT_TRUE(words >> pid >> parent >> session) << text;
    EXPECT_EQ(pid, process);
    EXPECT_NE(parent, getpid());
    EXPECT_NE(session, getsid(0));
    EXPECT_EQ(text.substr(static_cast<std::size_t>(words.tellg())), "\n/\nready\n");
    EXPECT_EQ(sentenceOf([&] { startDetached({folder / "none"}, log); }),
        (folder / "none").string() + " can't be started: No such file or directory.");
}

} // namespace zn::test
