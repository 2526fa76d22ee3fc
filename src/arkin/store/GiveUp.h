#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

/// A check-out that somebody else than its owner has ended.
struct GivenUp {
    std::string user;    ///< who had it
    std::string machine; ///< and where
    std::int64_t takenAt = 0;
    std::int32_t baseVersion = 0; ///< 0 for a file that had never been checked in
    std::string byUser;
    std::int64_t at = 0; ///< Unix seconds
    std::string reason;
};

/// Ends a check-out of another user, another machine or a run, and keeps who did it and why. `seen` is the check-out
/// as the caller knows it; whether its run still works is his to know. No local copy is touched: a changed one stays
/// where its owner has it, and can't be checked in until he has checked the file out again. What was written to card
/// and references since is dropped; a file that was never checked in stays, in the version with which it was added.
/// Raises E_ARK_PERMISSION_DENIED without the right to delete files from the folder, E_ARK_NOT_CHECKED_OUT if the
/// check-out isn't that one any more, E_INVALIDARG without a reason and for the caller's own check-out.
void giveUp(Vault& vault, const CheckOutRow& seen, const std::string& reason);

/// From the first to the last.
std::vector<GivenUp> givenUp(Database& database, std::int32_t fileId);

/// Raises E_ARK_NOT_CHECKED_OUT with who, when and why, if the file's check-out on this machine was given up and it
/// hasn't been checked out here since.
void requireNotGivenUp(Vault& vault, std::int32_t fileId);
/// The file is being checked out here again. Inside a transaction.
void forgetGivenUp(Vault& vault, std::int32_t fileId);

} // namespace zn::arkin
