#pragma once

#include "addin/installation/SettingsLight.h"
#include "addin/pages/Pages.h"
#include "arkin/tasks/LaunchInstance.h"
#include "arkin/tasks/TaskProperties.h"
#include "arkin/vault/VaultObject.h"
#include "tests/arkin/VaultFixture.h"
#include "tests/support/Failures.h"
#include "tests/support/pages/Browser.h"
#include "tests/support/pages/Person.h"
#include "tests/support/TestPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zn::test {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

/// A host's window, the real vault and a task definition in it, and the product's pages with their closed libraries
/// from the program's folder.
class PageFixture : public ::testing::Test {
protected:
    PageFixture()
        : ports(platform.ports())
        , m_vault(platform.folder.path())
        , vault(std::make_shared<zn::arkin::VaultObject>(m_vault.vault))
        , tasks(m_vault.store.database(), m_vault.vault.info().id)
    {
        ports.registry.write(RegistryRoot::Machine, productKey, u"Location",
            RegistryValue::text(platform.machine.files().fromMachine(ZN_BIN_DIR)));
        vault->setDesktop(&browser);
        window.resize(760, 560);
        window.show();
    }

    /// Makes the task "Nightly" with these variables and opens its definition.
    void openTask(TaskKind kind, zn::arkin::Variables variables = {})
    {
        variables[u"__type"] = static_cast<std::int32_t>(kind);
        zn::arkin::TaskDefinition definition;
        definition.name = u"Nightly";
        definition.variables = std::move(variables);
        tasks.create(definition);
        reopenTask();
    }
    void store(std::initializer_list<std::pair<const char16_t*, Value>> values)
    {
        for (const auto& [name, value] : values)
            ASSERT_EQ(task->SetValue(name, value), S_OK);
    }
    /// A printer of this machine that prints into a folder.
    void addPrinter(const Text& name) { platform.addPrinter(name, platform.path("prints")); }
    /// As the next administrator gets it, from the database.
    void reopenTask()
    {
        storeChange();
        task = std::make_shared<zn::arkin::TaskProperties>(tasks.get(u"Nightly"));
    }
    /// What the database holds, each as "name=value", without those that begin with "__" unless named.
    zn::arkin::Variables stored()
    {
        storeChange();
        return tasks.get(u"Nightly").variables;
    }

    /// A run of a task "Nightly" with these variables that is about to be launched.
    static std::shared_ptr<zn::arkin::LaunchInstance> launchOf(
        zn::arkin::Variables variables, const zn::arkin::RunSetting& values = {})
    {
        zn::arkin::TaskDefinition definition;
        definition.name = u"Nightly";
        definition.variables = std::move(variables);
        return std::make_shared<zn::arkin::LaunchInstance>(definition, values);
    }

    Pages& pages()
    {
        if (!m_pages)
            m_pages = std::make_unique<Pages>(ports);
        return *m_pages;
    }
    PageSetting setting(TaskKind kind) { return {vault, task, kind, static_cast<std::int32_t>(window.winId())}; }

    TestPlatform platform;
    Platform ports;
    zn::arkin::test::TestVault m_vault;
    std::shared_ptr<zn::arkin::VaultObject> vault;
    zn::arkin::TaskStore tasks;
    std::shared_ptr<zn::arkin::TaskProperties> task;
    QWidget window;
    Browser browser;

private:
    /// What the pages wrote reaches the database, as when the host accepts.
    void storeChange()
    {
        if (task)
            tasks.change(task->task().id, task->change());
    }

    std::unique_ptr<Pages> m_pages;
};

} // namespace zn::test
