#include "zentrel/model/DocumentError.h"

namespace zentrel {

std::string quoted(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

} // namespace zentrel
