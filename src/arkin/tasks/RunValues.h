#pragma once

#include "arkin/tasks/RunStore.h"

namespace zn::arkin {

/// What a run's second lookup (`GetVariable`, a macro's `{Name}` and `{#Number}`) draws from.
struct RunSetting {
    zn::Text guid;
    zn::Text taskName;
    zn::Text userName;
    zn::Text vaultName;
    zn::Text vaultRoot;
    zn::Text hostName;
    std::int32_t runId = 0;
    std::int64_t launchedAt = 0; ///< Unix time, 0 before the launch has ended
};

/// The value of the run itself that has this number (an integer value) or this name (any other, taken as text and
/// compared without regard to case). `S_FALSE` and an empty value if there is none such:
///
///   1 RunGuid    2 TaskName    3 UserName     4 VaultName
///   5 VaultRoot  6 HostName    7 RunNumber    8 LaunchTime (a date)
zn::Status runValue(const RunSetting& setting, const zn::Value& idOrName, zn::Value& value);

/// All that it answers to: the names, and the numbers as a macro writes them, "#1" and so on.
std::vector<zn::Text> runValueNames();

} // namespace zn::arkin
