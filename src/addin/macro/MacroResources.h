#pragma once

#include "base/Text.h"
#include "contracts/host/Codes.h"

namespace zn {

/// The macro template with which a task of this kind begins, and which a reset brings back, with its placeholders.
/// A value that is no kind gets the general stub.
Text defaultMacro(TaskKind kind);

} // namespace zn
