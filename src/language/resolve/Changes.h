#pragma once

#include "language/tree/Tree.h"

namespace zn::language {

/// Whether evaluating a resolved expression leaves all variables and elements as they are: it calls no procedure and no
/// member, which might get them by reference. What it refers to may then be lent instead of copied.
bool changesNothing(const Expr& expr);

/// Whether a variable gets itself with more text behind it, so that it may grow in place.
bool growsItself(const Expr& target, const Expr& value);

} // namespace zn::language
