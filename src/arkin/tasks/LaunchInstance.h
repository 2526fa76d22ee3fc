#pragma once

#include "arkin/tasks/RunValues.h"
#include "contracts/host/ArkTask.h"

namespace zn::arkin {

/// A run while it is being launched: it sees the definition's variables and gathers its own in memory. Nothing of it
/// is in the database until the launch has succeeded, so a launch that fails leaves nothing behind.
class LaunchInstance final : public zn::IArkTaskInstance {
public:
    LaunchInstance(TaskDefinition task, RunSetting setting);

    /// What the launch wrote.
    const Variables& ownVariables() const { return m_own; }

    zn::Status GetInstanceGuid(zn::Text& guid) override;
    zn::Status SetProgressRange(std::int32_t total, std::int32_t position, zn::TextView text) override;
    zn::Status SetProgressPos(std::int32_t position, zn::TextView text) override;
    zn::Status GetStatus(zn::TaskRunState& state) override;
    /// A run that isn't in the queue yet has no state to write: `E_NOTIMPL`.
    zn::Status SetStatus(zn::TaskRunState state, zn::Status code, zn::TextView text,
        const std::vector<zn::ArkTaskResultDoc>& results) override;
    zn::Status GetValue(zn::TextView name, zn::Value& value) override;
    zn::Status SetValue(zn::TextView name, const zn::Value& value) override;
    zn::Status GetTaskName(zn::Text& name) override;
    zn::Status GetVariable(const zn::Value& idOrName, zn::Value& value) override;

private:
    TaskDefinition m_task;
    RunSetting m_setting;
    Variables m_own;
};

} // namespace zn::arkin
