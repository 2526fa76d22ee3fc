#pragma once

#include "arkin/store/Schema.h"
#include "arkin/tasks/Launch.h"
#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/TaskHost.h"
#include "platform/linux/LinuxFileSystem.h"
#include "platform/linux/SqliteRegistry.h"
#include "platform/Sqlite.h"
#include "tests/arkin/RegisterClass.h"
#include "tests/support/Failures.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <soci/soci.h>
#include <thread>

namespace zn::arkin::test {

using zn::test::sentenceOf;

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
    TaskFixture()
        : here(*this)
        , tasks(here.database, 1)
    {
        here.database.session() << "INSERT INTO vaults (id, name, name_key, root) VALUES (1, 'Demo', 'demo', '/Vault')";
        const auto library = here.files.fromMachine(ZN_BIN_DIR "/libTestAddIn.so");
        registerClass(here.registry, u"Test.AddIn", u"{ADD-IN}", library);
        registerClass(here.registry, u"Test.Silent", u"{SILENT}", library);
        registerClass(here.registry, u"Test.Stranger", u"{STRANGER}", library);
        registerClass(here.registry, u"Test.Unknown", u"{UNKNOWN}", library);
        registerClass(here.registry, u"Test.Gone", u"{GONE}", u"Z:\\nowhere\\gone.so");
    }

    /// A connection and a host of another thread or process.
    struct Side {
        explicit Side(const TaskFixture& test)
            : database(test.connection)
            , registry(test.folder / "registry.sqlite")
            , files(registry)
            , host{database, 1, vault.vault(), registry, files, clock, u"anna"}
            , runs((applySchema(database, vaultSchema), database), 1)
        {
            vault.failures["GetErrorText"] = zn::S_FALSE;
        }

        Database database;
        zn::SqliteRegistry registry;
        zn::LinuxFileSystem files;
        SetClock clock;
        zn::test::FakeHost vault; ///< a run asks for its name and its root; it has no texts
        TaskHost host;
        RunStore runs;
    };

    TaskDefinition define(const zn::Text& name, const zn::Text& plan, Variables more = {})
    {
        TaskDefinition task;
        task.name = name;
        task.addIn = u"Test.AddIn";
        task.variables = std::move(more);
        task.variables[u"Plan"] = zn::Value(plan);
        tasks.create(task);
        return tasks.get(name);
    }
    /// Launches a task of the plan on one file.
    RunInfo launch(const zn::Text& plan, Variables more = {})
    {
        static int count = 0;
        return launchTask(host, define(u"Task " + zn::numberText(++count), plan, std::move(more)), oneFile());
    }
    static zn::ArkSelection oneFile() { return {{41, 9, u"Z:\\Vault\\a.step", u"Red", zn::ArkItemType::File, 3}}; }
    /// Waits for another process to bring the run to the state.
    void awaitState(std::int32_t runId, zn::TaskRunState state)
    {
        for (int i = 0; i < 2000 && runs.get(runId).state != state; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        ASSERT_EQ(runs.get(runId).state, state);
    }

    zn::test::TemporaryFolder folder;
    std::string connection = zn::sqliteConnection(folder / "vault.sqlite");
    Side here;
    TaskHost& host = here.host;
    RunStore& runs = here.runs;
    TaskStore tasks;
};

} // namespace zn::arkin::test
