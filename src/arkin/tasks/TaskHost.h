#pragma once

#include "arkin/store/Database.h"
#include "contracts/host/ArkVault.h"
#include "platform/Clock.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <functional>

namespace zn {
struct ArkCmd;
}

namespace zn::arkin {

class Vault;
struct RunInfo;
struct RunSetting;

/// What launching and running a task needs of its surroundings. Everything outlives the host's use of it.
struct TaskHost {
    Database& database; ///< the connection of the calling thread
    std::int32_t vaultId;
    std::shared_ptr<zn::IArkVault> vault; ///< what add-ins get
    zn::Registry& registry;
    zn::FileSystem& files;
    zn::Clock& clock;
    zn::Text userName;
    Vault* opened = nullptr; ///< behind `vault`; null where the vault isn't one of the store
    /// Starts a worker that outlives this process, and returns when it is there. Raises `StatusError` with a sentence.
    std::function<void()> startWorker{};
};

/// The values of the run itself that come from the surroundings: vault and machine. Raises the vault's failure.
RunSetting settingOf(const TaskHost& host);

/// A sentence for a failed status of an add-in: the vault's own, if it has one, and the number.
std::string describeStatus(const TaskHost& host, zn::Status status);
/// The same, with its full stop, for a failed command: the sentence that the add-in has left in the command's text, if
/// it has.
std::string describeFailure(const TaskHost& host, zn::Status status, const zn::ArkCmd& cmd);

} // namespace zn::arkin
