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

} // namespace zn::arkin
