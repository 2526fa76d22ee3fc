#pragma once

#include "language/text/Token.h"

#include <vector>

namespace zn::language {

/// Cuts a source into tokens. Comments and line continuations are gone; each logical line ends with an `EndOfLine`,
/// the whole with `EndOfSource`. What can't be read becomes a `Faulty` token, so that text that `#If` leaves out
/// may hold anything. The tokens refer to `source`, which must outlive them.
std::vector<Token> tokenize(TextView source);

/// The physical lines, without their line ends.
std::vector<Text> sourceLines(TextView source);

} // namespace zn::language
