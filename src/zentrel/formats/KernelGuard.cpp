#include "zentrel/formats/KernelGuard.h"

#include "contracts/documents/DocumentError.h"

#include <array>
#include <csetjmp>
#include <csignal>
#include <cstring>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <mutex>
#include <new>
#include <Standard_Failure.hxx>

namespace zn::zentrel {

namespace {

/// Where a fault on this thread goes back to; null while nothing is guarded.
thread_local sigjmp_buf* currentGuard = nullptr;

constexpr std::array faultSignals = {SIGSEGV, SIGBUS, SIGFPE, SIGILL};
std::array<struct sigaction, faultSignals.size()> previousActions;

/// A fault outside a guard goes to whoever handled it before.
void raiseToPrevious(int signal)
{
    for (std::size_t index = 0; index < faultSignals.size(); ++index) {
        if (faultSignals[index] == signal)
            sigaction(signal, &previousActions[index], nullptr);
    }
    raise(signal);
}

extern "C" void zentrelFaultHandler(int signal)
{
    if (currentGuard)
        siglongjmp(*currentGuard, signal);
    raiseToPrevious(signal);
}

/// A stack that has run over can't hold a signal handler's frame, so the handler gets a stack of its own.
void prepareThread()
{
    static std::once_flag installed;
    std::call_once(installed, [] {
        struct sigaction action { };
        action.sa_handler = zentrelFaultHandler;
        action.sa_flags = SA_ONSTACK;
        for (std::size_t index = 0; index < faultSignals.size(); ++index)
            sigaction(faultSignals[index], &action, &previousActions[index]);
    });
    static thread_local std::array<char, 65536> handlerStack;
    stack_t stack{};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    sigaltstack(&stack, nullptr);
}

[[noreturn]] void raiseKernel(const std::string& what, const std::string& doing, const std::filesystem::path& file)
{
    throw DocumentError(
        ErrorKind::Kernel, "The geometry kernel " + what + " while " + doing + " the file " + quoted(file) + ".");
}

/// Runs `work` and gives the signal that ended it, or 0. Holds nothing that a jump back could leave undone.
int signalOf(const std::function<void()>& work)
{
    sigjmp_buf here;
    sigjmp_buf* const outer = currentGuard;
    // The mask is saved and restored: the handler runs with its signal blocked.
    const int signal = sigsetjmp(here, 1);
    if (signal == 0) {
        currentGuard = &here;
        try {
            work();
        } catch (...) {
            currentGuard = outer;
            throw;
        }
    }
    currentGuard = outer;
    return signal;
}

} // namespace

void runGuarded(const std::string& doing, const std::filesystem::path& file, const std::function<void()>& work)
{
    // The kernel tells its progress on the standard output, where it would get among a caller's own lines.
    static std::once_flag silenced;
    std::call_once(silenced, [] { Message::DefaultMessenger()->ChangePrinters().Clear(); });
    prepareThread();
    int signal = 0;
    try {
        signal = signalOf(work);
    } catch (const Standard_Failure& failure) {
        const std::string reason = failure.GetMessageString();
        raiseKernel("failed (" + (reason.empty() ? failure.DynamicType()->Name() : reason) + ")", doing, file);
    } catch (const std::bad_alloc&) {
        raiseKernel("ran out of memory", doing, file);
    }
    if (signal != 0)
        raiseKernel(std::string("crashed (") + strsignal(signal) + ")", doing, file);
}

} // namespace zn::zentrel
