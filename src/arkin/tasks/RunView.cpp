#include "arkin/tasks/RunView.h"

#include "arkin/store/Codes.h"

namespace zn::arkin {

using zn::Status;

RunView::RunView(RunStore& runs, RunSetting setting)
    : m_runs(runs)
    , m_setting(std::move(setting))
    , m_variables(runs.variables(m_setting.runId))
{
}

Status RunView::GetInstanceGuid(zn::Text& guid)
{
    guid = m_setting.guid;
    return zn::S_OK;
}

Status RunView::GetStatus(zn::TaskRunState& state)
{
    try {
        state = m_runs.get(m_setting.runId).state;
        return zn::S_OK;
    } catch (...) {
        return currentFailure().status;
    }
}

Status RunView::GetValue(zn::TextView name, zn::Value& value)
{
    const auto found = m_variables.find(zn::Text(name));
    value = found == m_variables.end() ? zn::Value() : found->second;
    return found == m_variables.end() ? zn::S_FALSE : zn::S_OK;
}

Status RunView::GetTaskName(zn::Text& name)
{
    name = m_setting.taskName;
    return zn::S_OK;
}

Status RunView::GetVariable(const zn::Value& idOrName, zn::Value& value)
{
    try {
        return runValue(m_setting, idOrName, value);
    } catch (...) {
        return currentFailure().status;
    }
}

Status RunView::SetProgressRange(std::int32_t, std::int32_t, zn::TextView) { return zn::E_ACCESSDENIED; }
Status RunView::SetProgressPos(std::int32_t, zn::TextView) { return zn::E_ACCESSDENIED; }
Status RunView::SetStatus(zn::TaskRunState, Status, zn::TextView, const std::vector<zn::ArkTaskResultDoc>&)
{
    return zn::E_ACCESSDENIED;
}
Status RunView::SetValue(zn::TextView, const zn::Value&) { return zn::E_ACCESSDENIED; }

} // namespace zn::arkin
