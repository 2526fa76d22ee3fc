#include "arkin/tasks/TaskProperties.h"

#include "arkin/store/Codes.h"

#include <utility>

namespace zn::arkin {

TaskProperties::TaskProperties(TaskDefinition task)
    : m_task(std::move(task))
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
        // In the form in which the database gives it back, so that a reader can't tell the difference.
        const auto kept = fromStoredVariable(toStoredVariable(value));
        m_change.variables[key] = kept;
        m_task.variables[key] = kept;
        return zn::S_OK;
    } catch (...) {
        const auto failure = currentFailure();
        if (m_refusal.empty())
            m_refusal = "The variable '" + zn::toUtf8(name) + "' couldn't be written: " + failure.sentence;
        return failure.status;
    }
}

zn::Status TaskProperties::GetTaskName(zn::Text& name)
{
    name = m_task.name;
    return zn::S_OK;
}

zn::Status TaskProperties::SetSetupPages(const std::vector<zn::ArkTaskPage>& pages)
{
    m_pages = pages;
    return zn::S_OK;
}

zn::Status TaskProperties::GetMenuCmds(std::vector<zn::ArkMenuCmd>& entries)
{
    entries.clear();
    for (const auto& entry : m_task.menu)
        entries.push_back({entry.identifier, entry.menuText, entry.flags, entry.statusText});
    return zn::S_OK;
}

zn::Status TaskProperties::SetMenuCmds(const std::vector<zn::ArkMenuCmd>& entries)
{
    try {
        std::vector<MenuEntry> menu;
        for (const auto& entry : entries)
            menu.push_back({entry.identifier, entry.menuText.value_or(zn::Text()),
                entry.statusText.value_or(zn::Text()), entry.flags});
        m_change.menu = menu;
        m_task.menu = std::move(menu);
        return zn::S_OK;
    } catch (...) {
        return currentFailure().status;
    }
}

zn::Status TaskProperties::SetTaskFlags(std::int32_t flags)
{
    m_flags = flags;
    return zn::S_OK;
}

zn::Status TaskProperties::GetVariable(std::int32_t variableId, zn::Value& value)
{
    const auto found = m_declared.find(variableId);
    value = found == m_declared.end() ? zn::Value() : found->second;
    return found == m_declared.end() ? zn::S_FALSE : zn::S_OK;
}

zn::Status TaskProperties::SetVariable(std::int32_t variableId, const zn::Value& value)
{
    m_declared[variableId] = value;
    return zn::S_OK;
}

std::string TaskProperties::takeRefusal() { return std::exchange(m_refusal, {}); }

} // namespace zn::arkin
