#pragma once

#include "automation/SocketRunningObjects.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace zn::test {

/// An object whose members show each thing that can happen in a call from another process.
class Counterpart : public DispatchObject {
public:
    Value invoke(MemberCall& call) override
    {
        auto& arguments = call.arguments;
        if (call.name == u"Echo")
            return arguments.at(0);
        if (call.name == u"Swap") {
            std::swap(arguments.at(0), arguments.at(1));
            return static_cast<std::int32_t>(call.argumentNames.size());
        }
        if (call.name == u"Fill") {
            (*arguments.at(0).get<ArrayRef>())->elements.at(1) = Value(u"filled");
            return {};
        }
        if (call.name == u"Child") {
            if (!m_child)
                m_child = std::make_shared<Counterpart>();
            return m_child;
        }
        if (call.name == u"ChildIsHeld")
            return m_child.use_count() > 1;
        if (call.name == u"IsChild")
            return arguments.at(0).toObject() == m_child;
        if (call.name == u"Fire")
            return m_sink ? m_sink->onEvent(7, arguments) : E_FAIL;
        if (call.name == u"Fail")
            throw StatusError(DISP_E_BADINDEX, "There is no such configuration: \xD0\x96.");
        if (call.name == u"RunMacro")
            usleep(20'000); // longer than the shortest limit of a call
        if (call.name == u"Die" || call.name == u"RunMacro2")
            raise(SIGKILL);
        return {};
    }
    Text typeName() const override { return u"Counterpart"; }
    std::vector<Text> facilities() const override { return {u"Echoing", u"Größe"}; }
    std::uint32_t advise(const Text& eventInterface, std::shared_ptr<EventSink> sink) override
    {
        if (eventInterface != u"Events")
            throw StatusError(E_NOINTERFACE, "No such events.");
        m_sink = std::move(sink);
        return 5;
    }
    void unadvise(std::uint32_t) override { m_sink.reset(); }

private:
    std::shared_ptr<EventSink> m_sink;
    DispatchRef m_child;
};

/// A process of its own that publishes a `Counterpart` as "Test" and serves one client. Killed with this object.
class ServerProcess {
public:
    explicit ServerProcess(const std::filesystem::path& folder)
        : m_id(fork())
    {
        if (m_id != 0)
            return;
        automation::SocketRunningObjects table(folder);
        const auto server = table.publish(u"Test", std::make_shared<Counterpart>());
        _exit(static_cast<int>(server->serve(std::chrono::seconds(20))));
    }
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;
    ~ServerProcess()
    {
        if (m_id <= 0)
            return;
        kill(m_id, SIGKILL);
        wait();
    }

    pid_t id() const { return m_id; }
    /// Waits for the process's end; its exit code is the number of the `ServeEnd`, 128 and more a signal.
    int wait()
    {
        int status = 0;
        waitpid(m_id, &status, 0);
        m_id = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }

private:
    pid_t m_id = -1;
};

} // namespace zn::test
