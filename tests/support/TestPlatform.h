#pragma once

#include "platform/linux/FolderPrinters.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/LocalPipe.h"
#include "platform/RunningObjects.h"
#include "tests/support/TemporaryFolder.h"

#include <vector>

namespace zn::test {

/// A clock that stands still until it is told otherwise, and whose waits end at once.
class StillClock : public Clock {
public:
    std::int64_t now() override { return time; }
    void sleep(std::chrono::milliseconds duration) override { slept += duration; }
    bool wait(WaitEvent& event, std::chrono::milliseconds duration) override
    {
        slept += duration;
        return event.waitFor(std::chrono::milliseconds(0));
    }

    std::int64_t time = 1'520'000'000;
    std::chrono::milliseconds slept{0};
};

/// Keeps what is sent instead of a service that this machine doesn't have.
class RecordingPipe : public LocalPipe {
public:
    bool send(TextView, TextView, const std::string& message) override
    {
        messages.push_back(message);
        return false;
    }

    std::vector<std::string> messages;
};

class NoRunningObjects : public RunningObjects {
public:
    bool available() override { return false; }
    DispatchRef lookup(TextView) override { return nullptr; }
    void requestStop(TextView) override { }
};

/// The machine's real ports in a home of a test's own, with a clock and a pipe under its control.
class TestPlatform {
public:
    TestPlatform()
        : machine(Home::open(folder / "home"))
    {
    }

    Platform ports()
    {
        Platform all = machine.with(running);
        return {all.registry, all.files, all.processes, all.runningObjects, all.windows, pipe, clock, all.printers,
            all.products};
    }
    /// A printer of this machine that prints into a folder.
    void addPrinter(const Text& name, const Text& printsInto)
    {
        static_cast<Registry&>(machine.registry())
            .write(RegistryRoot::Machine, Text(folderPrintersKey) + u"\\" + name, printerFolderValue,
                RegistryValue::text(printsInto));
    }
    /// The backslash path of a name in the temporary folder.
    Text path(const std::string& name) { return machine.files().fromMachine(folder / name); }

    TemporaryFolder folder;
    StillClock clock;
    RecordingPipe pipe;
    NoRunningObjects running;
    LinuxPlatform machine;
};

} // namespace zn::test
