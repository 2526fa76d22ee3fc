#pragma once

#include "addin/session/ZNManager.h"
#include "platform/FileSystem.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "tests/addin/session/FakeObject.h"
#include "tests/support/Failures.h"
#include "tests/support/Files.h"
#include "tests/support/TestPlatform.h"

#include <fstream>
#include <gmock/gmock.h>
#include <mutex>

namespace zn::test {

using ::testing::ElementsAre;

/// A clock whose waits take a ten-thousandth of their time and more, so that real processes still get on with their
/// work in between.
class QuickClock : public Clock {
public:
    std::int64_t now() override { return 0; }
    void sleep(std::chrono::milliseconds duration) override
    {
        slept += duration;
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
    bool wait(WaitEvent& event, std::chrono::milliseconds duration) override
    {
        return event.waitFor(std::chrono::milliseconds(duration >= std::chrono::minutes(1) ? 300 : 0));
    }

    std::chrono::milliseconds slept{0};
};

/// Windows that come and go as the test says. A key or a close request takes its window away.
class FakeWindows : public TopWindows {
public:
    struct Window {
        std::int32_t processId = 0;
        Text title;
        WindowHandle parent = 0;
    };

    void open(WindowHandle handle, Window window)
    {
        const std::lock_guard lock(m_mutex);
        m_windows[handle] = std::move(window);
    }
    bool isOpen(WindowHandle handle)
    {
        const std::lock_guard lock(m_mutex);
        return m_windows.contains(handle);
    }

    std::vector<WindowHandle> enumerate() override
    {
        const std::lock_guard lock(m_mutex);
        std::vector<WindowHandle> handles;
        for (const auto& [handle, window] : m_windows)
            handles.push_back(handle);
        return handles;
    }
    std::int32_t processId(WindowHandle window) override { return find(window).processId; }
    Text title(WindowHandle window, std::size_t limit) override { return find(window).title.substr(0, limit); }
    WindowHandle parent(WindowHandle window) override { return find(window).parent; }
    void postKey(WindowHandle window, int keyCode) override { note(window, "key " + std::to_string(keyCode)); }
    void postClose(WindowHandle window) override { note(window, "close"); }
    void show(WindowHandle window, ShowState state) override { shown.emplace_back(window, static_cast<int>(state)); }

    std::vector<std::string> answers;
    std::vector<std::pair<WindowHandle, int>> shown;

private:
    Window find(WindowHandle handle)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_windows.find(handle);
        return found == m_windows.end() ? Window() : found->second;
    }
    void note(WindowHandle handle, const std::string& what)
    {
        const std::lock_guard lock(m_mutex);
        answers.push_back(what + " " + toUtf8(m_windows[handle].title));
        m_windows.erase(handle);
    }

    std::mutex m_mutex;
    std::map<WindowHandle, Window> m_windows;
};

/// The real table of processes, with memory sizes that the test sets.
class SizedProcesses : public Processes {
public:
    explicit SizedProcesses(Processes& real)
        : m_real(real)
    {
    }
    std::optional<std::int32_t> launch(TextView line, int showState) override { return m_real.launch(line, showState); }
    bool open(std::int32_t id) override { return m_real.open(id); }
    std::optional<std::uint32_t> exitCode(std::int32_t id) override { return m_real.exitCode(id); }
    bool terminate(std::int32_t id, std::uint32_t code) override { return !immortal && m_real.terminate(id, code); }
    std::optional<std::uint64_t> workingSet(std::int32_t) override { return size; }
    std::optional<FileVersion> fileVersion(TextView path) override { return m_real.fileVersion(path); }

    std::optional<std::uint64_t> size;
    bool immortal = false;

private:
    Processes& m_real;
};

/// Publishes the test's application under the name of whatever process is asked for.
class OneApplication : public RunningObjects {
public:
    bool available() override { return reachable; }
    DispatchRef lookup(TextView name) override
    {
        const std::int32_t asked = leadingInteger(name.substr(TextView(u"Zentrel_PID_").size()));
        starts += asked != processId ? 1 : 0;
        processId = asked;
        return isUp() ? application : nullptr;
    }
    void requestStop(TextView name) override { stopped.push_back(toUtf8(name)); }

    bool reachable = true;
    std::vector<std::string> stopped;
    FakeRef application;
    std::int32_t processId = 0;
    int starts = 0;

private:
    /// The script has got to its end, where it becomes a sleeping program.
    bool isUp() const
    {
        std::string program;
        std::getline(std::ifstream("/proc/" + std::to_string(processId) + "/comm"), program);
        return program == "sleep";
    }
};

struct Notes : SavedFileNotes {
    void NoteSavedFile(TextView path, TextView configuration, bool hidden) override
    {
        lines.push_back("saved " + toUtf8(path) + " [" + toUtf8(configuration) + "]" + (hidden ? " hidden" : ""));
    }
    void NotePrintedItem(TextView printer, TextView configuration) override
    {
        lines.push_back("printed " + toUtf8(printer) + " [" + toUtf8(configuration) + "]");
    }
    std::vector<std::string> lines;
};

/// A session with real processes, files and registry; the process is a script that does nothing, and the application
/// that it should publish is the test's.
class SessionTest : public ::testing::Test {
protected:
    SessionTest()
    {
        application->set("RevisionNumber", u"26.0.0");
        const auto frame = std::make_shared<FakeObject>();
        frame->set("GetHWnd", std::int32_t{77});
        application->set("Frame", Value(frame));
        application->members["ExitApp"] = [this](MemberCall&) {
            endApplication();
            return Value();
        };
        running.application = application;
        install("exec sleep 600");
    }

    /// Installs the CAD application as the machine's default; each of its starts leaves its switch in "starts".
    void install(const std::string& program)
    {
        const auto file = machine.folder / "ZENTREL.EXE";
        std::ofstream(file) << "#!/bin/sh\necho \"$1\" >> \"$(dirname \"$0\")/starts\"\n" << program << '\n';
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
        const Text classes = u"SOFTWARE\\Classes\\";
        write(classes + u"Zentrel.Application\\CLSID", u"{CAD}");
        write(classes + u"CLSID\\{CAD}\\LocalServer32", machine.path("ZENTREL.EXE"));
        write(classes + u"CLSID\\{CAD}\\ProgID", u"Zentrel.Application.26");
    }
    /// Ends the process and waits until it has gone.
    void endApplication()
    {
        machine.machine.processes().terminate(running.processId, 0);
        waitForEnd();
    }
    void waitForEnd()
    {
        for (int look = 0; look < 2000 && processes.open(running.processId); ++look)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    void write(const Text& key, TextView text)
    {
        machine.machine.registry().write(RegistryRoot::Machine, key, u"", RegistryValue::text(text), {});
    }
    std::string content(const std::string& name) { return readFile(machine.folder / name); }
    Platform ports()
    {
        const Platform real = machine.ports();
        return {real.registry, real.files, processes, running, windows, real.pipe, clock, real.printers, real.products};
    }

    TestPlatform machine;
    QuickClock clock;
    FakeWindows windows;
    OneApplication running;
    SizedProcesses processes{machine.machine.processes()};
    std::shared_ptr<CallLog> log = std::make_shared<CallLog>();
    FakeRef application = std::make_shared<FakeObject>(log);
    Notes notes;
    ZNManager session{ports()};
};

} // namespace zn::test
