#include "arkin/tasks/NewTask.h"

#include "contracts/host/ArkTask.h"

namespace zn::arkin {

using zn::Value;

TaskDefinition startTask(const TaskRequest& request)
{
    TaskDefinition task;
    task.name = request.name;
    task.host.fileLimit = request.fileLimit.value_or(request.file.fileLimit.value_or(0));
    task.host.keepsIdentical = request.keepsIdentical.value_or(request.file.keepsIdentical.value_or(false));
    if (request.file.menuDisplay)
        task.variables[zn::Text(zn::menuDisplayVariable)] = Value(*request.file.menuDisplay);
    task.variables[zn::Text(zn::scriptVariable)] = Value(request.script);
    for (const auto* given : {&request.file.variables, &request.settings})
        for (const auto& [name, value] : *given)
            task.variables[name] = value;
    task.variables[zn::Text(zn::kindVariable)] = Value(static_cast<std::int32_t>(request.kind));
    return task;
}

void settleTask(TaskDefinition& task, const TaskRequest& request)
{
    for (const auto& [name, value] : startTask(request).variables)
        task.variables[name] = value;
    for (auto& entry : task.menu) {
        entry.menuText = request.file.menuText.value_or(entry.menuText);
        entry.statusText = request.file.menuDescription.value_or(entry.statusText);
    }
}

} // namespace zn::arkin
