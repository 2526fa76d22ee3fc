#pragma once

#include "automation/SocketRunningObjects.h"

#include <sys/types.h>

namespace zn::test {

/// An object whose members show each thing that can happen in a call from another process.
class Counterpart : public DispatchObject {
public:
    Value invoke(MemberCall& call) override;
    Text typeName() const override { return u"Counterpart"; }
    std::uint32_t advise(const Text& eventInterface, std::shared_ptr<EventSink> sink) override;
    void unadvise(std::uint32_t) override { m_sink.reset(); }

private:
    std::shared_ptr<EventSink> m_sink;
    DispatchRef m_child;
};

/// A process of its own that publishes a `Counterpart` as "Test" and serves one client. Killed with this object.
class ServerProcess {
public:
    explicit ServerProcess(const std::filesystem::path& folder);
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess();

    pid_t id() const { return m_id; }
    /// Waits for the process's end; its exit code is the number of the `ServeEnd`, 128 and more a signal.
    int wait();

private:
    pid_t m_id = -1;
};

} // namespace zn::test
