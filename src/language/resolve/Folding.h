#pragma once

#include "language/tree/Tree.h"

#include <functional>

namespace zn::language {

/// The value of an expression whose names are all constants. Raises `SyntaxProblem` for one that isn't constant,
/// and `ScriptError` for one that can't be computed.
Value foldUnresolved(const Expr& expr, const std::function<Value(TextView)>& valueOfName);

/// The value, if the expression is a literal.
const Value* literalOf(const Expr& expr);

/// Replaces an operator on literals by its result. One that can't be computed stays, to fail when it runs.
void foldOperator(Expr& expr);

} // namespace zn::language
