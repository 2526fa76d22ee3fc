#include "platform/Processes.h"

#include <unistd.h>

namespace zn {

std::int32_t currentProcessId() { return ::getpid(); }

} // namespace zn
