#pragma once

#include <Standard_Failure.hxx>
#include <string>

namespace zn::zentrel {

/// Why the kernel failed, in its own words as far as they fit into a sentence: the innermost failure, on one line and
/// without addresses. Its kind when it says nothing.
std::string kernelReason(const Standard_Failure& failure);

} // namespace zn::zentrel
