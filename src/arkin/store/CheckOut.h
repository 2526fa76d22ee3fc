#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

/// Checks a file out to the caller on this machine: its latest version comes to the local view, writable.
/// Raises E_ARK_CHECKED_OUT (by the caller here already), E_ARK_CHECKED_OUT_ELSEWHERE, E_ARK_PERMISSION_DENIED
/// without the rights to read and to add, E_ARK_LOCAL_FILE_CHANGED when a local copy holds what the vault doesn't know.
void checkOut(Vault& vault, const Place& place);

/// Gives a check-out up. The local copy goes back to the latest version, and what was written to card and references
/// since is dropped. A file that was never checked in leaves the vault; its local file stays. If the local copy can't
/// be put back, that is raised, and the same call does it later although the file isn't checked out any more. Raises
/// E_ARK_NOT_CHECKED_OUT or E_ARK_CHECKED_OUT_ELSEWHERE.
void undoCheckOut(Vault& vault, std::int32_t fileId);

/// What is still checked out for a run of a task, by whomever, in the order of the files' numbers.
std::vector<CheckOutRow> checkOutsOfRun(Vault& vault, std::int32_t run);

/// Ends the check-outs that a query gives (file, folder, machine and base version of each), whosever they are. The
/// local copies stand as they are until `putBackCopies` is called on their machine. Inside a transaction.
void giveBackCheckOuts(Database& database, const std::string& query);
/// Puts the local copies of check-outs that were given back on this machine to the latest version, and with them what
/// was written there since the check-out away.
void putBackCopies(Vault& vault);

/// The check-out of a file if it is the caller's here. Raises E_ARK_NOT_CHECKED_OUT or E_ARK_CHECKED_OUT_ELSEWHERE with
/// a sentence that names the file and who has it.
CheckOutRow requireMine(Vault& vault, std::int32_t fileId);
/// Ends a check-out with what was written to card and references since. Inside a transaction.
void dropCheckOut(Database& database, const CheckOutRow& row);
/// Ends a check-out whose content is that of the version it began with: what was written to card and references since
/// becomes that version's. Inside a transaction.
void foldCheckOut(Database& database, const CheckOutRow& row);
/// Inside a transaction that has seen that nobody has the file checked out.
void insertCheckOut(Vault& vault, const Place& place, std::int32_t baseVersion);
/// The failure of a file that somebody else has.
zn::StatusError checkedOutElsewhere(Vault& vault, const CheckOutRow& checkOut);

/// Writes card values of files that are checked out here, in one transaction. They land in the versions that the
/// check-ins make. Returns an outcome for each write, in order. A file that isn't the caller's is left out alone; a
/// write that no file could take keeps all from being written.
std::vector<Failure> writeCards(Vault& vault, std::span<const CardWrite> writes);

/// A reference that a checked-out file is to get; it names the target's version of the time, or the one that the same
/// check-in makes, unless it asks for another.
struct NewReference {
    std::int32_t fileId = 0;
    Place to;
    std::int32_t toVersion = 0; ///< 0 for the latest
};
/// Adds references, in one transaction. A file that isn't the caller's is left out, with the failure of `requireMine`;
/// returned are those. Raises E_ARK_NOT_IN_VAULT and E_ARK_NO_SUCH_VERSION for targets, and then nothing was written.
std::vector<Failure> addReferences(Vault& vault, std::span<const NewReference> references);

} // namespace zn::arkin
