#pragma once

#include "base/Value.h"

namespace zn {

/// The text that stands for a value in a macro: integers in decimal, floats with six digits after the point whatever
/// the locale, booleans as "True" and "False", dates by the platform's conversion, texts as they are. Every other type
/// gives the empty text.
Text ValueToMacroText(const Value& value);

/// Rewrites a text so that it can stand between double quotes in a macro, which is stored in a single-byte code page:
/// each code unit above 255 turns into a `ChrW` call outside the quotes. Nothing else is escaped; a double quote in
/// the text closes the literal. A text with such calls gets line continuations after about each 100 characters, since
/// a macro line has a limited length.
Text EncodeForMacroString(TextView text);

} // namespace zn
