#pragma once

#include "base/Text.h"

namespace zn {

/// Whether `a` stands before `b` in a list for people: by the rules of the language root, numbers by their value
/// ("Sheet 2" before "Sheet 10").
bool naturallyLess(TextView a, TextView b);

} // namespace zn
