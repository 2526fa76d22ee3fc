#include "contracts/documents/DocumentError.h"

namespace zn {

std::string quoted(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

} // namespace zn
