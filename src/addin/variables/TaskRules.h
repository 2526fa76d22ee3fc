#pragma once

#include "contracts/host/ArkVault.h"

namespace zn {

/// What the property pages see to when they write, for variables of a definition that were written without them: raises
/// `E_INVALIDARG` with a sentence for an output format that isn't in the list, and computes the variables that follow
/// from others. A conversion without a format is no fault: its user is asked.
void settleVariables(const std::shared_ptr<IArkVault>& vault, const ObjectRef& task);

} // namespace zn
