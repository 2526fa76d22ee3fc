#pragma once

#include "arkin/store/StoreCheck.h"

namespace zn::arkin {

struct CleanReport {
    CheckReport check;
    /// None if the store isn't sound, or while another program adds files: nothing was touched then.
    std::optional<Archive::SetAside> done;
};

/// Sets aside what interrupted work has left in the archive, after a check that found nothing wrong. Contents that are
/// newer than the newest version stay: either work is under way, or the database is an older copy of itself and they
/// are what it has lost. `progress` is that of the check.
CleanReport cleanStore(Store& store, const std::function<void(std::int64_t done, std::int64_t total)>& progress = {});

} // namespace zn::arkin
