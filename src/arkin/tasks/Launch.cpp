#include "arkin/tasks/Launch.h"

#include "arkin/tasks/LaunchFlow.h"

namespace zn::arkin {

using zn::toUtf8;

RunInfo launchTask(const TaskHost& host, const TaskDefinition& task, zn::ArkSelection selection)
{
    LaunchFlow launch(host, task, std::move(selection));
    requireSettled(launch, launch.prepare(0), {});
    return launch.enqueue();
}

void requireSettled(const LaunchFlow& launch, LaunchStep step, const std::string& open)
{
    const auto name = "The task '" + toUtf8(launch.task().name) + "' wasn't launched: ";
    if (step == LaunchStep::Stopped)
        throw zn::StatusError(
            zn::E_ABORT, name + (launch.text().empty() ? "its add-in stopped the launch." : toUtf8(launch.text())));
    if (step == LaunchStep::Page)
        throw zn::StatusError(zn::E_ABORT,
            name + "it leaves settings to the user ('" + toUtf8(launch.text()) + "'" + (open.empty() ? "" : ": " + open)
                + ") and there is no window to ask in. Settle them in the task with 'arkin task set'.");
}

} // namespace zn::arkin
