#pragma once

#include "arkin/tasks/WorkerStop.h"

class QWidget;

namespace zn::arkin {

/// Asks when a worker is to stop that is at work; none if it isn't.
std::optional<StopWhen> askWhenToStop(QWidget* parent, const WorkerInfo& worker);

} // namespace zn::arkin
