#include "zentrel/model/DocumentError.h"

namespace zn::zentrel {

std::string quoted(const std::filesystem::path& path) { return "'" + path.string() + "'"; }

} // namespace zn::zentrel
