#pragma once

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

namespace zn::test {

struct Shelled {
    int code = 0;       ///< the exit code; 128 and more for a signal
    std::string output; ///< of both streams
};

/// Runs a command line to its end.
inline Shelled shell(const std::string& command)
{
    Shelled done;
    FILE* const pipe = popen(("{ " + command + "\n} 2>&1").c_str(), "r");
    char block[4096];
    for (std::size_t count = 0; (count = fread(block, 1, sizeof block, pipe)) > 0;)
        done.output.append(block, count);
    const int status = pclose(pipe);
    done.code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    return done;
}

/// The output of a command that succeeds.
inline std::string outputOf(const std::string& command)
{
    const Shelled done = shell(command);
    EXPECT_EQ(done.code, 0) << command << ": " << done.output;
    return done.output;
}

} // namespace zn::test
