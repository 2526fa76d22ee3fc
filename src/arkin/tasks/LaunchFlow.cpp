#include "arkin/tasks/LaunchFlow.h"

#include "arkin/tasks/AddInModule.h"
#include "arkin/tasks/LaunchCheck.h"

namespace zn::arkin {

using zn::Status;
using zn::StatusError;
using zn::toUtf8;

namespace {

std::shared_ptr<LaunchInstance> makeInstance(const TaskHost& host, const TaskDefinition& task, const zn::Text& guid)
{
    auto setting = settingOf(host);
    setting.guid = guid;
    setting.taskName = task.name;
    return std::make_shared<LaunchInstance>(task, setting);
}

} // namespace

LaunchFlow::LaunchFlow(TaskHost host, TaskDefinition task, zn::ArkSelection selection)
    : m_host(std::move(host))
    , m_task(std::move(task))
    , m_selection(std::move(selection))
    , m_guid(newGuid())
    , m_addIn(loadAddIn(m_host.registry, m_host.files, m_task.addIn))
    , m_instance(makeInstance(m_host, m_task, m_guid))
{
}

LaunchFlow::~LaunchFlow() { close(); }

void LaunchFlow::close() { m_addIn.reset(); }

Status LaunchFlow::send(zn::TaskCommand command, zn::ArkCmd& cmd)
{
    cmd.command = command;
    cmd.parentWindow = m_window;
    cmd.vault = m_host.vault;
    cmd.taskObject = m_instance;
    cmd.attended = m_attended;
    const auto button = cmd.text;
    const auto status = m_addIn->OnCmd(&cmd, &m_selection);
    m_unspoken += cmd.unspoken;
    // What the host has put in is no sentence of the add-in.
    if (cmd.text == button)
        cmd.text.clear();
    if (zn::failed(status))
        throw StatusError(status,
            "The task '" + toUtf8(m_task.name) + "' couldn't be launched: " + describeFailure(m_host, status, cmd));
    return status;
}

LaunchStep LaunchFlow::prepare(std::int32_t parentWindow, bool attended)
{
    m_window = parentWindow;
    m_attended = attended && parentWindow != 0;
    zn::ArkCmd cmd;
    send(zn::TaskCmdLaunch, cmd);
    m_text = cmd.text;
    if (cmd.cancel != 0)
        return LaunchStep::Stopped;
    if (cmd.taskObject == m_instance)
        return LaunchStep::Ready;
    m_pageWindow = cmd.parentWindow;
    return LaunchStep::Page;
}

bool LaunchFlow::accept()
{
    zn::ArkCmd cmd;
    cmd.text = u"OK";
    const auto status = send(zn::TaskCmdLaunchButton, cmd);
    return status != zn::S_FALSE && cmd.cancel == 0;
}

RunInfo LaunchFlow::enqueue()
{
    if (!m_anyway)
        requireCanRun(m_host, m_addIn ? m_addIn : loadAddIn(m_host.registry, m_host.files, m_task.addIn), m_instance,
            m_selection, m_task.name);
    RunStore runs(m_host.database, m_host.vaultId);
    const NewRun run{m_guid, m_host.userName, m_selection, m_instance->ownVariables(), 0, m_alongside, m_onlyChanged};
    const auto id = runs.enqueue(m_task, run, m_host.clock.now());
    return runs.get(id);
}

} // namespace zn::arkin
