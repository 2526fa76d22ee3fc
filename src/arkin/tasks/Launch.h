#pragma once

#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/TaskHost.h"

namespace zn::arkin {

class LaunchFlow;
enum class LaunchStep;

/// Launches a task on a selection: lets its add-in prepare the run in this process, without a window, and puts the run
/// into the queue. Nothing is stored unless all of it succeeds. Raises `StatusError` with a sentence when the add-in
/// can't be loaded, fails, stops the launch, or has a question that only a person at a window could answer.
RunInfo launchTask(const TaskHost& host, const TaskDefinition& task, zn::ArkSelection selection);

/// Raises `StatusError` E_ABORT with a sentence unless the launch needs nobody. `open` names what the page asks for.
void requireSettled(const LaunchFlow& launch, LaunchStep step, const std::string& open);

} // namespace zn::arkin
