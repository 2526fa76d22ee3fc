#pragma once

#include "language/parse/TokenReader.h"
#include "language/Program.h"

namespace zn::language {

/// Takes out the lines that `#If` leaves out, and the directives themselves. `#Const` adds to the constants.
/// Errors in directives go to `problems`.
std::vector<Token> applyConditions(const std::vector<Token>& tokens, const std::vector<ConditionalConstant>& constants,
    std::vector<SyntaxProblem>& problems);

} // namespace zn::language
