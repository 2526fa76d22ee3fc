#include "arkin/commands/frame/Interrupt.h"

#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>

namespace zn::arkin::test {

TEST(InterruptDeathTest, LateCtrlCLeavesTheExitCodeToTheWork)
{
    EXPECT_EXIT(
        {
            {
                const Interrupt interrupt;
            }
            std::raise(SIGINT);
            std::raise(SIGTERM);
            std::_Exit(1);
        },
        ::testing::ExitedWithCode(1), "^$");
}

TEST(InterruptDeathTest, FirstCtrlCAsksAndSaysSoOnce)
{
    EXPECT_EXIT(
        {
            const Interrupt interrupt;
            std::raise(SIGINT);
            std::raise(SIGINT); // a shell delivers it to the process and to its group
            std::_Exit(interrupt.flag() ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "^\narkin: Stopping after the file at hand; once more stops at once.\n$");
}

} // namespace zn::arkin::test
