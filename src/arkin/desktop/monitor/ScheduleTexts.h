#pragma once

#include "arkin/tasks/ScheduleTime.h"

#include <QString>

namespace zn::arkin {

/// "Mon"; 0 is Sunday.
QString dayWord(int day);

/// "daily 22:00 (Europe/Berlin)", "Mon, Thu 22:00 (Europe/Berlin)".
QString whenText(const ScheduleTime& time);

} // namespace zn::arkin
