#include "arkin/tasks/TaskProperties.h"

#include "arkin/store/Codes.h"

namespace arkin {

TaskProperties::TaskProperties(TaskStore& store, TaskDefinition task)
    : m_store(store)
    , m_task(std::move(task))
{
}

zn::Status TaskProperties::GetValue(zn::TextView name, zn::Value& value)
{
    const auto found = m_task.variables.find(zn::Text(name));
    value = found == m_task.variables.end() ? zn::Value() : found->second;
    return found == m_task.variables.end() ? zn::S_FALSE : zn::S_OK;
}

zn::Status TaskProperties::SetValue(zn::TextView name, const zn::Value& value)
{
    try {
        const zn::Text key(name);
        m_store.setVariables(m_task.id, {{key, value}});
        m_task.variables[key] = value;
        return zn::S_OK;
    } catch (...) {
        return currentFailure().status;
    }
}

} // namespace arkin
