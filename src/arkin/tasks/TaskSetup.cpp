#include "arkin/tasks/TaskSetup.h"

#include "arkin/tasks/AddInModule.h"

#include <utility>

namespace zn::arkin {

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

void TaskSetup::send(zn::TaskCommand command, zn::ArkCmd& cmd, const char* what)
{
    const auto button = cmd.text;
    cmd.command = command;
    cmd.parentWindow = m_window;
    cmd.vault = m_host.vault;
    cmd.taskObject = m_properties;
    cmd.attended = m_attended;
    zn::ArkSelection nothing;
    m_properties->takeRefusal();
    const auto status = m_addIn->OnCmd(&cmd, &nothing);
    m_unspoken += cmd.unspoken;
    const auto refusal = m_properties->takeRefusal();
    if (!zn::failed(status) && refusal.empty())
        return;
    // What the host has put in is no sentence of the add-in.
    if (cmd.text == button)
        cmd.text.clear();
    throw StatusError(zn::failed(status) ? status : zn::E_FAIL,
        "The task '" + toUtf8(task().name) + "' " + what + ": "
            + (refusal.empty() ? describeFailure(m_host, status, cmd) : refusal));
}

void TaskSetup::open(std::int32_t parentWindow, bool attended)
{
    m_window = parentWindow;
    m_attended = attended;
    zn::ArkCmd cmd;
    send(zn::TaskCmdSetup, cmd, "can't be set up");
    if (pages().empty())
        throw StatusError(zn::E_UNEXPECTED, "The add-in of the task '" + toUtf8(task().name) + "' has no pages.");
}

std::optional<zn::Text> TaskSetup::accept()
{
    zn::ArkCmd cmd;
    cmd.text = u"OK";
    send(zn::TaskCmdSetupButton, cmd, "isn't changed");
    return cmd.cancel != 0 ? std::optional(cmd.text) : std::nullopt;
}

zn::Text TaskSetup::takeUnspoken() { return std::exchange(m_unspoken, {}); }

void TaskSetup::cancel()
{
    zn::ArkCmd cmd;
    cmd.text = u"Cancel";
    send(zn::TaskCmdSetupButton, cmd, "isn't changed, but its add-in reports a failure");
}

void TaskSetup::setHostSettings(const HostSettings& settings)
{
    m_hostSettings = settings == task().host ? std::nullopt : std::optional(settings);
}

std::optional<TaskConflict> TaskSetup::store(bool replaceOthers)
{
    auto change = m_properties->change();
    change.user = m_host.userName;
    change.at = m_host.clock.now();
    change.host = m_hostSettings;
    const auto revision = replaceOthers ? std::nullopt : std::optional(task().revision);
    return TaskStore(m_host.database, m_host.vaultId).change(task().id, change, revision);
}

} // namespace zn::arkin
