#pragma once

#include "arkin/tasks/TaskStore.h"

#include <functional>

class QMenu;

namespace zn::arkin {

/// Adds the menu entries of all tasks, in the order of the tasks' names. What an entry does is its status tip; choosing
/// one calls `launch` with the task's name. Returns how many there are.
int addTaskEntries(QMenu& menu, TaskStore& tasks, const std::function<void(const zn::Text& task)>& launch);

} // namespace zn::arkin
