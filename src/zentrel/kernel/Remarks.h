#pragma once

#include <string>
#include <vector>

namespace zn::zentrel {

/// Sentences for a person about work that succeeded: what was left out or done another way than was asked.
using Remarks = std::vector<std::string>;

/// What a child of the kernel's made, with its remarks behind it, as one block of bytes.
std::string withRemarks(std::string bytes, const Remarks& remarks);

/// Takes the remarks off such a block again.
Remarks takeRemarks(std::string& block);

} // namespace zn::zentrel
