#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

/// Shows a file in the desktop's program for it. One of the vault comes to the local view first, with what it refers
/// to, if it isn't there. Raises `StatusError` with a sentence if it is nowhere, or no program opens it.
void openFile(Vault& vault, const zn::Text& path);

} // namespace zn::arkin
