#pragma once

#include <cstdio>
#include <exception>
#include <functional>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace zn::test {

/// Runs `work` in so many processes at once; each gets its number and returns a count below 200. The sum of them.
inline int sumOfProcesses(int processes, const std::function<int(int)>& work)
{
    std::vector<pid_t> children;
    for (int i = 0; i < processes; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            try {
                _exit(work(i));
            } catch (const std::exception& failure) {
                std::fprintf(stderr, "%s\n", failure.what());
                _exit(200);
            }
        }
        children.push_back(child);
    }
    int sum = 0;
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) < 200);
        sum += WEXITSTATUS(status);
    }
    return sum;
}

} // namespace zn::test
