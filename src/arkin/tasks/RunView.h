#pragma once

#include "arkin/tasks/RunValues.h"
#include "contracts/host/ArkTask.h"

namespace zn::arkin {

/// A run that is looked at: it tells what the database has of it at each moment, and lets nothing be written.
class RunView final : public zn::IArkTaskInstance {
public:
    /// `setting` of this run; `runs` outlives the object.
    RunView(RunStore& runs, RunSetting setting);

    zn::Status GetInstanceGuid(zn::Text& guid) override;
    zn::Status GetStatus(zn::TaskRunState& state) override;
    zn::Status GetValue(zn::TextView name, zn::Value& value) override;
    zn::Status GetTaskName(zn::Text& name) override;
    zn::Status GetVariable(const zn::Value& idOrName, zn::Value& value) override;

    // `E_ACCESSDENIED`: the run belongs to its worker.
    zn::Status SetProgressRange(std::int32_t total, std::int32_t position, zn::TextView text) override;
    zn::Status SetProgressPos(std::int32_t position, zn::TextView text) override;
    zn::Status SetStatus(zn::TaskRunState state, zn::Status code, zn::TextView text,
        const std::vector<zn::ArkTaskResultDoc>& results) override;
    zn::Status SetValue(zn::TextView name, const zn::Value& value) override;

private:
    RunStore& m_runs;
    RunSetting m_setting;
    Variables m_variables;
};

} // namespace zn::arkin
