#include "base/Version.h"

namespace zn {

const char* softwareVersion() { return ZN_VERSION; }

} // namespace zn
