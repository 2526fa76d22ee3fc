#include "zentrel/kernel/KernelChild.h"
#include "tests/zentrel/Documents.h"
#include "zentrel/kernel/KernelLimits.h"

#include <csignal>
#include <Standard_Failure.hxx>
#include <unistd.h>

using namespace zn::zentrel;
using namespace zn::zentrel::test;

namespace {

const KernelTask task{"reading", "a.step", std::chrono::seconds(1)};

/// Deep enough for any stack, and out of reach for a clever compiler.
std::string deeper(std::size_t depth)
{
    static std::string (*volatile next)(std::size_t) = deeper;
    return next(depth + 1) + std::to_string(depth);
}

std::string greedy()
{
    std::string taken;
    for (;;)
        taken.append(std::size_t{8} << 20, 'x');
}

std::string faultOf(std::string_view kind)
{
    if (kind == "fault")
        raise(SIGSEGV);
    else if (kind == "abort")
        std::abort();
    else if (kind == "overrun")
        return deeper(0);
    else if (kind == "failure")
        throw Standard_Failure("too thin");
    else if (kind == "refusal")
        throw DocumentError(ErrorKind::Damaged, "It is cut.");
    else if (kind == "endless")
        while (getppid() > 0) { }
    else if (kind == "greedy")
        return greedy();
    else if (kind == "large")
        return std::string(std::size_t{20} << 20, 'x');
    else if (kind == "gone")
        pause();
    return std::to_string(getpid());
}

/// Works in a process that has done nothing before.
std::string wornOut(std::string_view)
{
    static int calls = 0;
    if (++calls > 1)
        raise(SIGSEGV);
    return std::to_string(getpid());
}

struct Kernel : ::testing::Test {
    ~Kernel() override { setKernelLimits({}); }
};

} // namespace

TEST_F(Kernel, aFaultCostsTheCallOnly)
{
    bool gone = false;
    setKernelLimits({std::chrono::seconds(1), std::size_t{128} << 20, [&] { return gone; }});
    const struct {
        const char* kind;
        std::string words;
        ErrorKind error = ErrorKind::Kernel;
    } faults[] = {
        {"fault", "The geometry kernel crashed (Segmentation fault) while reading the file 'a.step'."},
        {"abort", "The geometry kernel crashed (Aborted) while reading the file 'a.step'."},
        {"overrun", "crashed"},
        {"failure", "The geometry kernel failed (too thin) while reading the file 'a.step'."},
        {"refusal", "It is cut.", ErrorKind::Damaged},
        {"endless", "came to no end within 1 seconds of computing while reading the file 'a.step'."},
#ifndef __SANITIZE_ADDRESS__
        {"greedy", "The geometry kernel ran out of memory while reading the file 'a.step'."},
#endif
        {"large", "The geometry kernel made more than 16 MB while reading the file 'a.step'."},
        {"gone", "was stopped, since whoever asked for it has gone, while"},
    };
    for (const auto& [kind, words, error] : faults) {
        gone = kind == std::string_view("gone");
        expectError(error, words, [&, what = kind] { runInChild(task, [&] { return faultOf(what); }); });
        const std::string before = gone ? "" : askKernel(task, faultOf, "");
        expectError(error, words, [&, what = kind] { askKernel(task, faultOf, what); });
        gone = false;
        EXPECT_EQ(askKernel(task, faultOf, "") == before, error != ErrorKind::Kernel) << kind;
    }
    EXPECT_EQ(runInChild(task, [] { return std::string(300000, 'x'); }).size(), 300000u);
}

TEST_F(Kernel, aChildHasChildrenWithinItsLimitsAndOneProcessServesManyCalls)
{
    const std::string server = askKernel(task, faultOf, "");
    EXPECT_NE(server, std::to_string(getpid()));
    EXPECT_EQ(askKernel(task, faultOf, ""), server);
    kill(std::stoi(server), SIGKILL);
    siginfo_t facts{};
    waitid(P_PID, static_cast<id_t>(std::stoi(server)), &facts, WEXITED | WNOWAIT);
    EXPECT_NE(askKernel(task, faultOf, ""), server) << "one that has gone is replaced";
    const auto nested = [] { return runInChild(task, [] { return faultOf("fault"); }); };
    expectError(ErrorKind::Kernel, "Segmentation", [&] { runInChild(task, nested); });
    const auto asking = [] { return std::to_string(askKernel(task, faultOf, "") == std::to_string(getpid())); };
    EXPECT_EQ(runInChild(task, asking), "1") << "a kernel's process needs no other one";
}

TEST_F(Kernel, aCallThatFailsWhereManyAreServedIsMadeOnceMoreInAChildOfItsOwn)
{
    setKernelLimits({std::chrono::seconds(1), std::size_t{128} << 20, {}});
    const std::string server = askKernelOrChild(task, wornOut, "");
    EXPECT_EQ(askKernel(task, faultOf, ""), server) << "it stays for others";
    const std::string alone = askKernelOrChild(task, wornOut, "");
    EXPECT_NE(alone, server);
    EXPECT_NE(askKernelOrChild(task, wornOut, ""), alone);
    expectError(ErrorKind::Kernel, "Segmentation", [] { askKernelOrChild(task, faultOf, "fault"); });
    const std::string before = askKernel(task, faultOf, "");
    expectError(ErrorKind::Damaged, "It is cut.", [] { askKernelOrChild(task, faultOf, "refusal"); });
    EXPECT_EQ(askKernel(task, faultOf, ""), before);
}
