#pragma once

#include <filesystem>

namespace zn::zentrel {

/// Removes the sockets by which killed processes of this user were published.
void removeLeftOverSockets(const std::filesystem::path& runtimeFolder);

} // namespace zn::zentrel
