#pragma once

#include "arkin/desktop/pictures/DailyHost.h"
#include "arkin/store/Files.h"

class QPoint;
class QWidget;

namespace zn::arkin {

/// Shows what can be done with one version of a file, and does what is chosen: get it in place of the latest, open a
/// copy of it, compare it with the latest, or make its content the newest version. True if the vault has changed.
/// Raises what that raises.
bool showVersionMenu(
    const DailyHost& host, QWidget* window, const Place& place, std::int32_t version, const QPoint& at);

} // namespace zn::arkin
