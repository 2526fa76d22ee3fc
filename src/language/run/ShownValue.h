#pragma once

#include "base/Value.h"

namespace zn::language {

struct Module;

/// A value as `LineWatcher` tells it. Never raises for a value, whatever it holds.
Text shownValue(const Value& value, const Module& module);

} // namespace zn::language
