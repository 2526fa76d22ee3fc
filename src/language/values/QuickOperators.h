#pragma once

#include "language/values/Operators.h"

namespace zn::language {

/// The common cases of `applyBinary`: two of the types Integer, Long and Double, whose result has the wider one's type
/// and fits. False for everything else, of which only `applyBinary` knows what it means.
bool applyQuickly(Operator op, const Value& left, const Value& right, Value& result);

} // namespace zn::language
