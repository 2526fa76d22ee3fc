#pragma once

#include "arkin/commands/frame/Session.h"

namespace zn::arkin {

/// The product's add-in where it is installed: beside this program.
std::filesystem::path installedAddIn();
/// Registers an add-in's library in the session's home, with what the windows of this product need: the host's own
/// control, and the folder where it is installed. Raises `StatusError` with a sentence.
void registerAddIn(Session& session, const std::filesystem::path& library);

} // namespace zn::arkin
