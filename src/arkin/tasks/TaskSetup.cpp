#include "arkin/tasks/TaskSetup.h"

#include "arkin/tasks/AddInModule.h"

namespace arkin {

using zn::Status;
using zn::StatusError;
using zn::toUtf8;

TaskSetup::TaskSetup(TaskHost host, TaskDefinition task)
    : m_host(std::move(host))
    , m_addIn(loadAddIn(m_host.registry, m_host.files, task.addIn))
    , m_properties(std::make_shared<TaskProperties>(std::move(task)))
{
}

TaskSetup::~TaskSetup() { close(); }

void TaskSetup::close()
{
    // The pages refer to the properties, and these by the pages' records to the add-in that owns them.
    m_properties->SetSetupPages({});
    m_addIn.reset();
}

Status TaskSetup::send(zn::TaskCommand command, zn::ArkCmd& cmd)
{
    cmd.command = command;
    cmd.parentWindow = m_window;
    cmd.vault = m_host.vault;
    cmd.taskObject = m_properties;
    zn::ArkSelection nothing;
    return m_addIn->OnCmd(&cmd, &nothing);
}

void TaskSetup::failed(Status status, const char* what) const
{
    throw StatusError(
        status, "The task '" + toUtf8(task().name) + "' " + what + ": " + describeStatus(m_host, status) + ".");
}

void TaskSetup::open(std::int32_t parentWindow)
{
    m_window = parentWindow;
    zn::ArkCmd cmd;
    if (const auto status = send(zn::TaskCmdSetup, cmd); zn::failed(status))
        failed(status, "can't be set up");
    if (pages().empty())
        throw StatusError(zn::E_UNEXPECTED, "The add-in of the task '" + toUtf8(task().name) + "' has no pages.");
}

std::optional<zn::Text> TaskSetup::accept()
{
    zn::ArkCmd cmd;
    cmd.text = u"OK";
    m_properties->takeRefusal();
    const auto status = send(zn::TaskCmdSetupButton, cmd);
    const auto refusal = m_properties->takeRefusal();
    if (zn::failed(status) && refusal.empty())
        failed(status, "isn't changed");
    if (!refusal.empty())
        throw StatusError(zn::failed(status) ? status : zn::E_FAIL, refusal);
    return cmd.cancel != 0 ? std::optional(cmd.text) : std::nullopt;
}

void TaskSetup::cancel()
{
    zn::ArkCmd cmd;
    cmd.text = u"Cancel";
    if (const auto status = send(zn::TaskCmdSetupButton, cmd); zn::failed(status))
        failed(status, "isn't changed, but its add-in reports a failure");
}

std::optional<TaskConflict> TaskSetup::store(bool replaceOthers)
{
    auto change = m_properties->change();
    change.user = m_host.userName;
    change.at = m_host.clock.now();
    const auto revision = replaceOthers ? std::nullopt : std::optional(task().revision);
    return TaskStore(m_host.database, m_host.vaultId).change(task().id, change, revision);
}

} // namespace arkin
