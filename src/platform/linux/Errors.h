#pragma once

#include "base/Status.h"

#include <string>

namespace zn {

/// The status that stands for a system error number: access denied, out of memory, otherwise a general failure.
Status systemStatus(int error);
/// The system's sentence for an error number, UTF-8 ("No space left on device").
std::string systemText(int error);
/// "`what`: the system's sentence." for the calling thread's `errno`.
StatusError systemFailure(const std::string& what);

} // namespace zn
