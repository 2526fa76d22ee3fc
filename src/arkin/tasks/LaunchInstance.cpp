#include "arkin/tasks/LaunchInstance.h"

#include "arkin/store/Codes.h"

namespace zn::arkin {

using zn::Status;
using zn::Text;
using zn::TextView;
using zn::Value;

LaunchInstance::LaunchInstance(TaskDefinition task, RunSetting setting)
    : m_task(std::move(task))
    , m_setting(std::move(setting))
{
}

Status LaunchInstance::GetInstanceGuid(Text& guid)
{
    guid = m_setting.guid;
    return zn::S_OK;
}

Status LaunchInstance::SetProgressRange(std::int32_t, std::int32_t, TextView) { return zn::S_OK; }
Status LaunchInstance::SetProgressPos(std::int32_t, TextView) { return zn::S_OK; }

Status LaunchInstance::GetStatus(zn::TaskRunState& state)
{
    state = zn::TaskRunState::Queued;
    return zn::S_OK;
}

Status LaunchInstance::SetStatus(zn::TaskRunState, Status, TextView, const std::vector<zn::ArkTaskResultDoc>&)
{
    return zn::E_NOTIMPL;
}

Status LaunchInstance::GetValue(TextView name, Value& value)
{
    const Text key(name);
    for (const auto* variables : {&m_own, &m_task.variables}) {
        if (const auto found = variables->find(key); found != variables->end()) {
            value = found->second;
            return zn::S_OK;
        }
    }
    value = Value();
    return zn::S_FALSE;
}

Status LaunchInstance::SetValue(TextView name, const Value& value)
{
    try {
        m_own[Text(name)] = fromStoredVariable(toStoredVariable(value));
        return zn::S_OK;
    } catch (...) {
        return currentFailure().status;
    }
}

Status LaunchInstance::GetTaskName(Text& name)
{
    name = m_task.name;
    return zn::S_OK;
}

Status LaunchInstance::GetVariable(const Value& idOrName, Value& value)
{
    try {
        return runValue(m_setting, idOrName, value);
    } catch (...) {
        return currentFailure().status;
    }
}

} // namespace zn::arkin
