#pragma once

#include "arkin/store/LeftOut.h"
#include "arkin/store/Vault.h"

namespace zn::arkin {

/// Which files a check-in takes, found out before it is done.
struct CheckInPlan {
    std::vector<CheckOutRow> files;
};

/// Settles what a check-in of these files would do. With `leftOut` a file that can't be checked in is noted there and
/// doesn't hinder the others; without, its failure is raised.
/// - a file that is checked out to the caller here is checked in;
/// - one that nobody has checked out is passed over if its local copy is a version of the vault; a changed local copy
///   is what the caller wants to have in the vault, so the file is checked out to him and then checked in;
/// - one that somebody else has is E_ARK_CHECKED_OUT_ELSEWHERE.
CheckInPlan planCheckIn(Vault& vault, std::span<const Place> places, std::vector<LeftOut>* leftOut = nullptr);

/// What became of one file of a check-in.
struct CheckedIn : FileVersion {
    std::string note; ///< a sentence about a document whose content tells nothing of itself; else empty
};

/// Makes a version of each file from its local copy, with the card values and references that were written since, and
/// gives the check-outs up; in one transaction, all or none, but for those that went to `leftOut` if it is given. The
/// versions' numbers come in the order of the plan: the next one for each file, 1 for a file that was added, and behind
/// these the latest one of files that make none (see `ActingRun::keepsIdentical`). What
/// documents say of themselves (see `Outlines`) is kept with the new versions. The local copies are read-only
/// afterwards. A file's own failures are E_ARK_LOCAL_FILE_MISSING, E_ARK_PERMISSION_DENIED and, if the check-out was
/// given up meanwhile, E_ARK_NOT_CHECKED_OUT. What the archive, the disk and the database raise concerns all and is
/// raised.
std::vector<CheckedIn> checkIn(
    Vault& vault, const CheckInPlan& plan, zn::TextView comment, std::vector<LeftOut>* leftOut = nullptr);

} // namespace zn::arkin
