#pragma once

#include "contracts/host/ArkTask.h"

#include <functional>
#include <string>

namespace zn::test {

/// A task's definition whose host refuses some writes.
class RefusingTask final : public IArkTaskProperties {
public:
    using Refuses = std::function<bool(TextView name, std::size_t written)>;

    RefusingTask(std::shared_ptr<IArkTaskProperties> task, Refuses refuses)
        : m_task(std::move(task))
        , m_refuses(std::move(refuses))
    {
    }

    Status GetValue(TextView name, Value& value) override { return m_task->GetValue(name, value); }
    Status SetValue(TextView name, const Value& value) override
    {
        if (m_refuses(name, written.size()))
            return E_ARK_PERMISSION_DENIED;
        written.push_back(toUtf8(name));
        return m_task->SetValue(name, value);
    }
    Status GetTaskName(Text& name) override { return m_task->GetTaskName(name); }
    Status SetSetupPages(const std::vector<ArkTaskPage>& shown) override { return m_task->SetSetupPages(shown); }
    Status GetMenuCmds(std::vector<ArkMenuCmd>& entries) override { return m_task->GetMenuCmds(entries); }
    Status SetMenuCmds(const std::vector<ArkMenuCmd>& entries) override { return m_task->SetMenuCmds(entries); }
    Status SetTaskFlags(std::int32_t flags) override { return m_task->SetTaskFlags(flags); }
    Status GetVariable(std::int32_t id, Value& value) override { return m_task->GetVariable(id, value); }
    Status SetVariable(std::int32_t id, const Value& value) override { return m_task->SetVariable(id, value); }

    std::vector<std::string> written;

private:
    std::shared_ptr<IArkTaskProperties> m_task;
    Refuses m_refuses;
};

} // namespace zn::test
