#pragma once

#include "contracts/host/ArkVault.h"

namespace zn::arkin {

/// Where the vault asks a person, so that the vault's objects need no toolkit. Window arguments are handles, 0 for
/// none.
class VaultDesktop {
public:
    virtual ~VaultDesktop() = default;

    /// Lets a person pick files of the vault; none when he cancels. `filter` is pairs of a label and patterns, all
    /// separated by "|". Paths of the local view, in the order of the choice.
    virtual std::vector<zn::Text> pickFiles(
        zn::IArkVault& vault, std::int32_t window, bool several, zn::TextView title, zn::TextView filter)
        = 0;
    /// Likewise one folder; null when he cancels.
    virtual std::shared_ptr<zn::IArkFolder> pickFolder(zn::IArkVault& vault, std::int32_t window, zn::TextView title)
        = 0;
};

} // namespace zn::arkin
