#pragma once

#include "addin/flows/ZNTaskAddIn.h"
#include "arkin/reftree/RefTreeRegistration.h"
#include "arkin/tasks/LaunchInstance.h"
#include "tests/support/pages/PageFixture.h"

namespace zn::test {

/// The add-in object with its real windows, in front of a vault with a task.
class FlowFixture : public PageFixture {
protected:
    FlowFixture()
        : addIn(std::make_shared<CZNTaskAddIn>(
            ports, [this] { return std::shared_ptr<PageFactory>(std::shared_ptr<void>(), &pages()); }))
    {
        zn::arkin::registerRefTree(
            ports.registry, platform.machine.files().fromMachine(std::string(ZN_BIN_DIR) + "/libarkin-reftree.so"));
    }

    /// Sends a command about `object` from the host's window.
    Status send(std::int32_t command, ObjectRef object, Text text = {})
    {
        cmd = {
            command, static_cast<std::int32_t>(window.winId()), vault, std::move(text), std::move(object), 0, true, {}};
        return addIn->OnCmd(&cmd, &selection);
    }
    /// A run of the task that is about to be launched.
    std::shared_ptr<zn::arkin::LaunchInstance> launchInstance()
    {
        zn::arkin::RunSetting values;
        values.guid = u"{11111111-2222-3333-4444-555555555555}";
        values.taskName = u"Nightly";
        return std::make_shared<zn::arkin::LaunchInstance>(tasks.get(u"Nightly"), values);
    }
    /// A released file of the vault as the host hands it over.
    ArkSelItem addSelected(const std::string& relative)
    {
        const auto place = m_vault.addReleased(relative, "content of " + relative);
        ArkSelItem item;
        item.fileId = place.fileId;
        item.folderId = place.folderId;
        item.path = m_vault.path(relative);
        item.version = -1;
        return item;
    }

    std::shared_ptr<CZNTaskAddIn> addIn;
    ArkSelection selection;
    ArkCmd cmd;
};

} // namespace zn::test
