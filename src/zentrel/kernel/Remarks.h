#pragma once

#include <string>
#include <vector>

namespace zn::zentrel {

/// Sentences for a person about work that succeeded: what was left out or done another way than was asked.
using Remarks = std::vector<std::string>;

} // namespace zn::zentrel
