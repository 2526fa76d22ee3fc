#pragma once

#include "arkin/store/Schema.h"
#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/TaskHost.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/SqliteRegistry.h"
#include "platform/Sqlite.h"
#include "tests/support/Failures.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zn::arkin::test {

using zn::test::sentenceOf;

/// The least vault that a run asks for: its name, its root and no texts.
class BareVault : public zn::IArkVault {
public:
    zn::Status GetRootFolderPath(zn::Text& path) override { return give(path, u"Z:\\Vault"); }
    zn::Status GetName(zn::Text& name) override { return give(name, u"Demo"); }
    zn::Status GetFileFromPath(zn::TextView, std::shared_ptr<zn::IArkFolder>*, std::shared_ptr<zn::IArkFile>&) override
    {
        return zn::S_FALSE;
    }
    zn::Status GetFolderFromPath(zn::TextView, std::shared_ptr<zn::IArkFolder>&) override { return zn::S_FALSE; }
    zn::Status CreateUtility(zn::ArkUtility, zn::ObjectRef&) override { return zn::E_NOTIMPL; }
    zn::Status BrowseForFile(std::int32_t, std::int32_t, zn::TextView, zn::TextView, std::vector<zn::Text>&) override
    {
        return zn::E_ARK_NO_DESKTOP;
    }
    zn::Status BrowseForFolder(std::int32_t, zn::TextView, std::shared_ptr<zn::IArkFolder>&) override
    {
        return zn::E_ARK_NO_DESKTOP;
    }
    zn::Status GetErrorText(zn::Status, zn::Text&, zn::Text&) override { return zn::S_FALSE; }

private:
    static zn::Status give(zn::Text& target, const char16_t* text)
    {
        target = text;
        return zn::S_OK;
    }
};

/// A clock of the test's own that doesn't wait.
class SetClock : public zn::Clock {
public:
    std::int64_t now() override { return time; }
    void sleep(std::chrono::milliseconds duration) override { time += duration.count() / 1000; }
    bool wait(zn::WaitEvent& event, std::chrono::milliseconds) override { return event.waitFor({}); }

    std::atomic<std::int64_t> time = 1'000'000;
};

/// A database with one vault, a registry in which the test add-in is registered, and a task for it.
class TaskFixture : public ::testing::Test {
protected:
    TaskFixture();

    /// A connection and a host of another thread or process.
    struct Side {
        explicit Side(const TaskFixture& test);
        Database database;
        zn::SqliteRegistry registry;
        zn::LinuxFileSystem files;
        SetClock clock;
        TaskHost host;
        RunStore runs;
    };

    TaskDefinition define(const zn::Text& name, const zn::Text& plan, Variables more = {});
    /// Launches a task of the plan on one file.
    RunInfo launch(const zn::Text& plan, Variables more = {});
    static zn::ArkSelection oneFile() { return {{41, 9, u"Z:\\Vault\\a.step", u"Red", zn::ArkItemType::File, 3}}; }
    /// Waits for another process to bring the run to the state.
    void awaitState(std::int32_t runId, zn::TaskRunState state);

    zn::test::TemporaryFolder folder;
    std::string connection = zn::sqliteConnection(folder / "vault.sqlite");
    Side here;
    TaskHost& host = here.host;
    RunStore& runs = here.runs;
    TaskStore tasks;
};

} // namespace zn::arkin::test
