#pragma once

#include "addin/session/ZnApplication.h"

namespace zn {

/// Corrects the members of a drawing's views before a save: releases before 21.3, started in regression mode, leave
/// members whose two texts have grown apart. 1 if there is nothing to do, `E_POINTER` if a view is missing, else 0.
/// The application's own failures are raised.
Status fixUpDrawing(const ZnApplication& application, const ZnModel& drawing, bool regressionMode);

} // namespace zn
