#pragma once

#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/ScheduleStore.h"
#include "arkin/tasks/TaskHost.h"

#include <functional>

namespace zn::arkin {

class LaunchFlow;

/// Launches where nobody can be asked, to the run in the queue. Raises `StatusError` with a sentence.
using UnattendedLaunch = std::function<RunInfo(LaunchFlow&)>;

/// What came of a time that was due.
struct ScheduledRun {
    Schedule schedule;
    RunInfo run;          ///< in the queue, or ended with errors and the reason if it couldn't be launched
    std::string sentence; ///< what of the schedule couldn't be launched
};

/// Launches the task that has been due the longest. None if none is due, or if another worker has just launched it:
/// whoever puts the run into the queue moves the schedule's next time on in the same transaction. Times that have
/// passed while no worker was there are made up for once. What can't be launched gives a run that has ended with the
/// reason.
std::optional<ScheduledRun> launchWhatIsDue(const TaskHost& host, const UnattendedLaunch& launch);

} // namespace zn::arkin
