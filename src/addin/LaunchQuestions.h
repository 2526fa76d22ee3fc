#pragma once

#include "host/ArkTask.h"

namespace zn {

/// What a conversion task leaves to the user at its launch, as words of a sentence ("the output format, the output
/// path"); empty when nothing is left open and no page would be shown. Works without windows, for launches from
/// scripts. Raises the host's failure.
Text openQuestions(const ObjectRef& instance);

} // namespace zn
