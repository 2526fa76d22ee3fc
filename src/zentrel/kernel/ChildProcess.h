#pragma once

#include "platform/FileDescriptor.h"
#include "zentrel/kernel/KernelChild.h"

#include <sys/types.h>
#include <vector>

namespace zn::zentrel {

/// A child process of the kernel's with its end of a socket, on both sides. It is killed and waited for at the end.
class ChildProcess {
public:
    /// Starts a child that runs `work` on its end of the socket and then ends. It writes below `folders` only, where
    /// the system can keep it there. Raises `Kernel`.
    ChildProcess(const std::vector<std::filesystem::path>& folders,
        const std::function<void(const zn::FileDescriptor& socket)>& work);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    const zn::FileDescriptor& socket() const { return m_socket; }
    /// Whether it hasn't ended, and doesn't end while this thread lives: the system ends it with the thread of this
    /// process that started it.
    bool isAlive() const;
    /// What it has taken when it sent its last answer, besides what it was born with, in bytes.
    std::size_t leftTaken() const { return m_leftTaken; }
    /// False when it met the limit of computing, or was stopped because its user has gone.
    bool wasAbleToEnd() const { return m_wasAbleToEnd; }
    /// The answer that `sendAnswer` sends at the other end. Raises what it holds, or what became of the child.
    std::string receiveAnswer(const KernelTask& task);

private:
    void receive(char* bytes, std::size_t count, const KernelTask& task);
    [[noreturn]] void raiseEnd(const KernelTask& task);
    [[noreturn]] void giveUp(const KernelTask& task, const std::string& reason);

    pid_t m_owner;
    pid_t m_thread;
    pid_t m_process = -1;
    zn::FileDescriptor m_socket;
    std::size_t m_mostMemory;
    std::size_t m_atFirst;
    std::size_t m_leftTaken = 0;
    bool m_wasAbleToEnd = true;
};

/// In a child: computing from now on, in seconds. Beyond it the system ends the process.
void limitComputing(std::chrono::seconds limit);
/// In a child: does the work and sends what came of it. Fails when the parent has gone, and then nobody waits.
void sendAnswer(const zn::FileDescriptor& socket, const KernelTask& task, const std::function<std::string()>& work);

} // namespace zn::zentrel
