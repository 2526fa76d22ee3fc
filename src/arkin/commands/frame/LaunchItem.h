#pragma once

#include "arkin/commands/frame/Session.h"
#include "contracts/host/Records.h"

namespace zn::arkin {

/// The file or folder of the vault at the path, for a launch. `version` 0 is the latest. Raises `StatusError` with a
/// sentence if the vault doesn't have it, or doesn't have the version and `versionMustBe`.
zn::ArkSelItem launchItem(Session& session, const std::string& machinePath, std::int32_t version = 0,
    const zn::Text& configuration = {}, bool versionMustBe = true);

} // namespace zn::arkin
