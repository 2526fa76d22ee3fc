#pragma once

#include "arkin/desktop/HostDesktop.h"
#include "arkin/tasks/LaunchFlow.h"
#include "arkin/tasks/TaskDetails.h"
#include "arkin/tasks/TaskSetup.h"
#include "arkin/vault/VaultObject.h"
#include "tests/arkin/RegisterClass.h"
#include "tests/arkin/VaultFixture.h"
#include "tests/support/pages/Person.h"

#include <gmock/gmock.h>

namespace zn::arkin::test {

using zn::test::Answers;
using zn::test::find;

/// A real vault, a task in it whose add-in has small pages of its own, and what the host's windows need of them.
class DesktopFixture : public ::testing::Test {
protected:
    DesktopFixture()
        : vault(folder.path())
        , registry(folder / "classes.sqlite")
        , files(registry)
        , object(std::make_shared<VaultObject>(vault.vault))
        , host{vault.store.database(), vault.vault.info().id, object, registry, files, vault.clock, u"anna"}
        , tasks(vault.store.database(), vault.vault.info().id)
    {
        registerClass(registry, u"Test.Pages", u"{PAGES}", files.fromMachine(ZN_BIN_DIR "/libPagesAddIn.so"));
    }

    TaskDefinition define(Variables variables = {})
    {
        TaskDefinition task;
        task.name = u"Nightly";
        task.addIn = u"Test.Pages";
        task.variables = std::move(variables);
        tasks.create(task);
        return tasks.get(task.name);
    }
    /// What the database has of the task.
    TaskDefinition stored() { return tasks.get(u"Nightly"); }
    std::size_t runCount() { return RunStore(vault.store.database(), host.vaultId).list().size(); }

    zn::test::TemporaryFolder folder;
    TestVault vault;
    zn::SqliteRegistry registry;
    zn::LinuxFileSystem files;
    std::shared_ptr<VaultObject> object;
    TaskHost host;
    TaskStore tasks;
};

} // namespace zn::arkin::test
