#pragma once

#include "contracts/host/ArkTask.h"

namespace zn {

/// What a conversion task leaves to the user at its launch, as words of a sentence ("the output format, the output
/// path"); empty when nothing is left open and no page would be shown. Works without windows, for launches from
/// scripts. `selectedKinds` is the bit set of the kinds of files selected: 4 assemblies, 8 parts, 16 anything else.
/// Raises the host's failure.
Text openQuestions(const ObjectRef& instance, std::int32_t selectedKinds);

} // namespace zn
