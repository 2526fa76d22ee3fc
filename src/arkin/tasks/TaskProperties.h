#pragma once

#include "arkin/tasks/TaskStore.h"
#include "host/ArkTask.h"

namespace arkin {

/// A task's definition as its add-in sees it while an administrator sets it up. Writes reach the store at once.
class TaskProperties final : public zn::IArkTaskProperties {
public:
    TaskProperties(TaskStore& store, TaskDefinition task);

    zn::Status GetValue(zn::TextView name, zn::Value& value) override;
    zn::Status SetValue(zn::TextView name, const zn::Value& value) override;

private:
    TaskStore& m_store;
    TaskDefinition m_task;
};

} // namespace arkin
