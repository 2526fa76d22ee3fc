#pragma once

#include "addin/flows/ZNTaskAddIn.h"

namespace zn {

/// Command 40: builds the property pages of the task's kind as children of the host's window, loads them from the
/// definition and hands them to the host. Failures are raised: `E_POINTER` without a definition, `E_INVALIDARG` if the
/// parent isn't a window.
void setupTask(TaskContext& context, const std::shared_ptr<IArkVault>& vault, ArkCmd& cmd, const ObjectRef& self);

/// Command 41: with the text "OK" checks the pages and writes them and the menu entry to the definition. A page that
/// refuses sets `cancel`, with its title in `text`. Any other text does nothing. Failures are raised, but for those of
/// pages that couldn't be written: the user is told of them.
void setupButton(TaskContext& context, ArkCmd& cmd);

} // namespace zn
