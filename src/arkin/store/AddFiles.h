#pragma once

#include "arkin/store/Vault.h"

namespace zn::arkin {

/// One file to be added. All paths are backslash paths.
struct AddRequest {
    zn::Text source; ///< any file of this machine; it is copied into the local view unless it stands there already
    zn::Text folder; ///< path of the local view; made if it is missing
    zn::Text name;
};

struct AddOutcome {
    Place place; ///< of the file; of the one in its way for E_ARK_NAME_ALREADY_EXISTS; else zeros
    zn::Status status = zn::S_OK;
    std::string sentence; ///< why it failed
    zn::Text path;        ///< in the local view
};

/// Adds files in one transaction and leaves them checked out to the caller, in version 1 with the source's content.
/// A file that can't be added has its failure in its outcome and doesn't hinder the others. Outcomes come in the order
/// of the requests. What concerns all of them (database, archive, full disk) is raised, and then nothing was added.
std::vector<AddOutcome> addFiles(Vault& vault, std::span<const AddRequest> requests);

} // namespace zn::arkin
