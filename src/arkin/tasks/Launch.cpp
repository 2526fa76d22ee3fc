#include "arkin/tasks/Launch.h"

#include "arkin/tasks/AddInModule.h"
#include "arkin/tasks/LaunchInstance.h"

namespace arkin {

using zn::StatusError;
using zn::toUtf8;

namespace {

void requireGoodEnd(const TaskHost& host, const TaskDefinition& task, const zn::ArkCmd& cmd,
    const zn::ObjectRef& instance, zn::Status status)
{
    const auto name = "The task '" + toUtf8(task.name) + "' ";
    if (zn::failed(status))
        throw StatusError(status, name + "couldn't be launched: " + describeStatus(host, status) + ".");
    if (cmd.cancel != 0)
        throw StatusError(zn::E_ABORT,
            name + "wasn't launched: " + (cmd.text.empty() ? "its add-in stopped the launch." : toUtf8(cmd.text)));
    if (cmd.taskObject != instance)
        throw StatusError(zn::E_ABORT,
            name + "wasn't launched: it leaves settings to the user ('" + toUtf8(cmd.text)
                + "') and there is no window to ask in. Settle them in the task with 'arkin task set'.");
}

} // namespace

RunInfo launchTask(const TaskHost& host, const TaskDefinition& task, zn::ArkSelection selection)
{
    auto setting = settingOf(host);
    setting.guid = newGuid();
    setting.taskName = task.name;
    const auto addIn = loadAddIn(host.registry, host.files, task.addIn);
    const auto instance = std::make_shared<LaunchInstance>(task, setting);
    zn::ArkCmd cmd;
    cmd.command = zn::TaskCmdLaunch;
    cmd.vault = host.vault;
    cmd.taskObject = instance;
    const auto status = addIn->OnCmd(&cmd, &selection);
    requireGoodEnd(host, task, cmd, instance, status);

    RunStore runs(host.database, host.vaultId);
    const auto id = runs.enqueue(
        task, {setting.guid, host.userName, std::move(selection), instance->ownVariables()}, host.clock.now());
    return runs.get(id);
}

} // namespace arkin
