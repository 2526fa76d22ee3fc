#pragma once

#include "arkin/store/Codes.h"
#include "arkin/store/Vault.h"

#include <deque>
#include <memory>

namespace zn::arkin {

class VaultDesktop;

/// What the objects of one open vault share.
struct ObjectContext {
    explicit ObjectContext(Vault& openVault)
        : vault(openVault)
    {
    }

    Vault& vault;
    /// Why the last operation failed; the status is 0 when it didn't.
    Failure lastFailure{zn::S_OK, {}};
    /// Of the last batch that went on without single files: their failures, in the order of its results. Whoever asks
    /// for the text of a result's status gets the sentence of the next file that has it.
    std::deque<Failure> failuresInTurn;
    /// Where a person can be asked; null if nobody can.
    VaultDesktop* desktop = nullptr;
};
using ContextRef = std::shared_ptr<ObjectContext>;

/// Runs one operation of a host object. `work` returns the status; what it raises turns into one.
template <class Work> zn::Status guarded(ObjectContext& context, Work work) noexcept
{
    try {
        try {
            context.lastFailure = {zn::S_OK, {}};
            return work();
        } catch (...) {
            context.lastFailure = currentFailure();
            return context.lastFailure.status;
        }
    } catch (...) {
        return zn::currentExceptionStatus();
    }
}

/// Does the work again and again while a disk is full, if it is done for a run. `work` must be able to begin anew after
/// a failure.
template <class Work> auto whenThereIsRoom(Vault& vault, Work work)
{
    for (;;) {
        try {
            return work();
        } catch (...) {
            const Failure failure = currentFailure();
            if (failure.status != E_ARK_DISK_FULL || !vault.actingRun()
                || !vault.actingRun()->awaitRoom(failure.sentence))
                throw;
        }
    }
}

} // namespace zn::arkin
