#include "platform/KernelConfinement.h"
#include "tests/support/TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::test {

namespace {

bool writes(const std::filesystem::path& file) { return static_cast<bool>(std::ofstream(file) << "x" << std::flush); }

int inChild(const std::function<bool()>& work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work() ? 1 : 0);
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status);
}

} // namespace

TEST(KernelConfinement, KeepsAThreadsWritesInFolders)
{
    const TemporaryFolder folder;
    for (const char* name : {"in", "other", "out"})
        std::filesystem::create_directory(folder / name);
    writes(folder / "out/own");
    // What the kernel can't do is left undone, and said.
    const bool byKernel = kernelConfinementVersion() > 0;
    const bool free = !byKernel;
    const bool confined
        = runWithWritesConfined({folder / "in", folder / "missing", folder / "other", "/dev/null"}, [&] {
              EXPECT_TRUE(writes(folder / "in/a"));
              EXPECT_TRUE(writes("/dev/null"));
              std::error_code failure;
              std::filesystem::rename(folder / "in/a", folder / "other/a", failure);
              EXPECT_FALSE(failure) << failure.message();
              EXPECT_EQ(writes(folder / "out/new"), free);
              EXPECT_EQ(writes(folder / "out/own"), free);
              EXPECT_EQ(std::filesystem::create_directory(folder / "missing", failure), free);
              EXPECT_EQ(std::filesystem::remove(folder / "out/own", failure), free);
              EXPECT_EQ(inChild([&] { return writes(folder / "out/child"); }), free ? 1 : 0);
              EXPECT_EQ(inChild([] { return execl("/bin/true", "true", nullptr) == 0; }), 0);
          });
    EXPECT_EQ(confined, byKernel) << "version " << kernelConfinementVersion();
    EXPECT_TRUE(writes(folder / "out/later")) << "the caller's own thread stays free";
    EXPECT_THROW(runWithWritesConfined({}, [] { throw std::runtime_error("passed on"); }), std::runtime_error);
}

} // namespace zn::test
