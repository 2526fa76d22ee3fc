#include "arkin/tasks/TaskDetails.h"

#include "arkin/tasks/AddInModule.h"
#include "arkin/tasks/RunView.h"

namespace zn::arkin {

TaskDetails::TaskDetails(TaskHost host, std::int32_t runId)
    : m_host(std::move(host))
    , m_runs(m_host.database, m_host.vaultId)
    , m_run(m_runs.get(runId))
{
}

TaskDetails::~TaskDetails() { close(); }

void TaskDetails::close() { m_addIn.reset(); }

zn::ArkTaskPage TaskDetails::open(std::int32_t parentWindow)
{
    close();
    m_addIn = loadAddIn(m_host.registry, m_host.files, m_run.addIn);
    m_run = m_runs.get(m_run.id);
    auto setting = settingOf(m_host);
    setting.guid = m_run.guid;
    setting.taskName = m_run.taskName;
    setting.userName = m_run.userName;
    setting.runId = m_run.id;
    setting.launchedAt = m_run.launchedAt;
    zn::ArkCmd cmd;
    cmd.command = zn::TaskCmdDetails;
    cmd.parentWindow = parentWindow;
    cmd.vault = m_host.vault;
    cmd.taskObject = std::make_shared<RunView>(m_runs, setting);
    zn::ArkSelection nothing;
    if (const auto status = m_addIn->OnCmd(&cmd, &nothing); zn::failed(status))
        throw zn::StatusError(status,
            "The details of run " + std::to_string(m_run.id)
                + " can't be shown: " + describeFailure(m_host, status, cmd));
    return {cmd.text, cmd.parentWindow, {}};
}

} // namespace zn::arkin
