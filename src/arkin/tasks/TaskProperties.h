#pragma once

#include "arkin/tasks/TaskStore.h"
#include "contracts/host/ArkTask.h"

#include <map>

namespace zn::arkin {

/// A task's definition as its add-in sees it while an administrator sets it up. What is written is gathered here and
/// read back from here; nothing of it is in the database before the change is given to a `TaskStore`, so whoever
/// gives up leaves the task as it was. Card variables that the task declares, pages and flags are kept in memory only.
class TaskProperties final : public zn::IArkTaskProperties {
public:
    explicit TaskProperties(TaskDefinition task);

    zn::Status GetValue(zn::TextView name, zn::Value& value) override;
    zn::Status SetValue(zn::TextView name, const zn::Value& value) override;
    zn::Status GetTaskName(zn::Text& name) override;
    zn::Status SetSetupPages(const std::vector<zn::ArkTaskPage>& pages) override;
    zn::Status GetMenuCmds(std::vector<zn::ArkMenuCmd>& entries) override;
    zn::Status SetMenuCmds(const std::vector<zn::ArkMenuCmd>& entries) override;
    zn::Status SetTaskFlags(std::int32_t flags) override;
    zn::Status GetVariable(std::int32_t variableId, zn::Value& value) override;
    zn::Status SetVariable(std::int32_t variableId, const zn::Value& value) override;

    /// As it would be with all that was written.
    const TaskDefinition& task() const { return m_task; }
    /// What was written: variables, and the menu if it was set. User and time are left to the caller.
    const TaskChange& change() const { return m_change; }
    const std::vector<zn::ArkTaskPage>& pages() const { return m_pages; }
    std::int32_t flags() const { return m_flags; }

    /// The first write that was refused since the last call, as a sentence; empty if there was none. An add-in may
    /// pass a failed status over, the host may not.
    std::string takeRefusal();

private:
    TaskDefinition m_task;
    TaskChange m_change;
    std::vector<zn::ArkTaskPage> m_pages;
    std::int32_t m_flags = 0;
    std::map<std::int32_t, zn::Value> m_declared;
    std::string m_refusal;
};

} // namespace zn::arkin
