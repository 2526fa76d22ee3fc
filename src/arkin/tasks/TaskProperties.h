#pragma once

#include "arkin/tasks/TaskStore.h"
#include "host/ArkTask.h"

#include <map>

namespace arkin {

/// A task's definition as its add-in sees it while an administrator sets it up. Writes reach the store at once.
/// Card variables that the task declares are kept in memory only, and so are the pages and flags.
class TaskProperties final : public zn::IArkTaskProperties {
public:
    TaskProperties(TaskStore& store, TaskDefinition task);

    zn::Status GetValue(zn::TextView name, zn::Value& value) override;
    zn::Status SetValue(zn::TextView name, const zn::Value& value) override;
    zn::Status GetTaskName(zn::Text& name) override;
    zn::Status SetSetupPages(const std::vector<zn::ArkTaskPage>& pages) override;
    zn::Status GetMenuCmds(std::vector<zn::ArkMenuCmd>& entries) override;
    zn::Status SetMenuCmds(const std::vector<zn::ArkMenuCmd>& entries) override;
    zn::Status SetTaskFlags(std::int32_t flags) override;
    zn::Status GetVariable(std::int32_t variableId, zn::Value& value) override;
    zn::Status SetVariable(std::int32_t variableId, const zn::Value& value) override;

    const TaskDefinition& task() const { return m_task; }
    const std::vector<zn::ArkTaskPage>& pages() const { return m_pages; }
    std::int32_t flags() const { return m_flags; }

private:
    TaskStore& m_store;
    TaskDefinition m_task;
    std::vector<zn::ArkTaskPage> m_pages;
    std::int32_t m_flags = 0;
    std::map<std::int32_t, zn::Value> m_declared;
};

} // namespace arkin
