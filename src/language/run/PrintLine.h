#pragma once

#include "base/Value.h"

namespace zn::language {

/// A value as `Print` shows it: a number with a blank, or its sign, before it and a blank behind.
Text printedValue(const Value& value);
/// A value as `Write #` writes it, so that `Input #` reads the same.
Text writtenValue(const Value& value);
/// Blanks from a column, counted from 0, to the next print zone.
Text toNextZone(std::size_t column);
/// What moves from a column to `target`, counted from 1: blanks, on a new line if that column is passed.
Text toColumn(std::size_t column, std::int32_t target);

} // namespace zn::language
