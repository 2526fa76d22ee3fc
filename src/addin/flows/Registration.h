#pragma once

#include "platform/Registry.h"

namespace zn {

/// The class that this module makes.
inline constexpr const char16_t* addInClassId = u"{7E1B6C52-93AD-4F0E-8B64-2D5C81F7A390}";

/// Writes the class, its program identifiers, the library's path and the application identity below
/// "SOFTWARE\Classes" of the machine root, in both views. Registering again renews everything.
/// Failures of the registry are raised; a key that may not be written is `E_ACCESSDENIED`.
void registerModule(Registry& registry, const Text& libraryPath);

/// Takes back all that `registerModule` writes. Success if nothing is registered.
void unregisterModule(Registry& registry);

} // namespace zn
