#pragma once

#include "contracts/classes/ClassStore.h"
#include "contracts/host/ArkAddIn.h"

#include <memory>
#include <vector>

namespace zn::arkin {

/// Loads the add-in behind a program identifier, as every host does: the registry's class id, its library, the
/// library's factory. The object keeps its library loaded. A library whose object isn't an `IArkAddIn5` is refused.
/// Every failure is a `StatusError` with a sentence.
std::shared_ptr<zn::IArkAddIn5> loadAddIn(zn::Registry& registry, zn::FileSystem& files, const zn::Text& programId);

/// All program identifiers of the machine that lead to a library, but for the controls of windows.
std::vector<zn::RegisteredClass> registeredAddIns(zn::Registry& registry);

} // namespace zn::arkin
