#pragma once

#include "base/Dispatch.h"
#include "platform/FileSystem.h"
#include "platform/Processes.h"
#include "platform/RunningObjects.h"

#include <chrono>
#include <functional>
#include <thread>

namespace zn::test {

/// A CAD application whose macro call is the test's own: what a real one can't be made to do at the wanted moment.
class FakeCad : public DispatchObject {
public:
    /// Gets the macro's text and says whether it went well.
    using Macro = std::function<bool(const std::string&)>;

    FakeCad(FileSystem& files, Processes& processes, Macro macro)
        : m_files(files)
        , m_processes(processes)
        , m_macro(std::move(macro))
    {
    }

    Value invoke(MemberCall& call) override
    {
        calls.push_back(toUtf8(call.name));
        if (call.name == u"RevisionNumber")
            return u"26.0.0";
        if (call.name == u"GetBuildNumbers2") {
            call.arguments.front() = u"zn2018";
            return {};
        }
        if (call.name == u"Frame")
            return Value(ObjectRef(std::make_shared<Frame>()));
        if (call.name == u"RunMacro2")
            return m_macro(m_files.readBytes(call.arguments.front().toText()).value());
        if (call.name == u"ExitApp")
            endProcess();
        return {};
    }
    Text typeName() const override { return u"Application"; }
    std::uint32_t advise(const Text&, std::shared_ptr<EventSink>) override { return 1; }

    std::int32_t processId = 0;
    std::vector<std::string> calls;

private:
    class Frame : public DispatchObject {
    public:
        Value invoke(MemberCall&) override { return 0; }
        Text typeName() const override { return u"Frame"; }
    };

    /// The session's waits take no time here, so the process has to be gone when this returns.
    void endProcess()
    {
        m_processes.terminate(processId, 0);
        for (int look = 0; look < 1000 && m_processes.exitCode(processId) == stillActive; ++look)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }

    FileSystem& m_files;
    Processes& m_processes;
    Macro m_macro;
};

/// Publishes one application under whatever process's name is looked up.
class OneRunningObject : public RunningObjects {
public:
    bool available() override { return true; }
    DispatchRef lookup(TextView name) override
    {
        if (application)
            application->processId = leadingInteger(name.substr(TextView(u"Zentrel_PID_").size()));
        return application;
    }

    std::shared_ptr<FakeCad> application;
};

} // namespace zn::test
