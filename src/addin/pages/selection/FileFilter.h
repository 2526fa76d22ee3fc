#pragma once

#include "base/Text.h"

#include <functional>

namespace zn {

/// Looks a text of the product's string file up.
using LookUpText = std::function<Text(int number, const char16_t* english)>;

/// What the vault's file browser offers, as pairs of a label and its patterns, all separated and ended by "|":
/// "Part (*.prt;*.zenprt)|*.prt; *.zenprt|". With `drawingsOnly` there is one pair, for drawings.
Text selectionFilter(const LookUpText& lookUp, bool drawingsOnly);

} // namespace zn
