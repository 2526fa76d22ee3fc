#pragma once

#include "arkin/store/Archive.h"
#include "arkin/store/Database.h"

namespace zn::arkin {

/// Makes sure that a database and an archive belong together: both have the same identity, which is given to them when
/// they are opened for the first time. A database of an older program, which has none, gets that of the archive if the
/// archive has its newest content.
/// Raises `StatusError` E_ARK_ARCHIVE with a sentence, and has changed nothing then, for a new or foreign database
/// beside an archive that holds contents, and for a foreign or missing archive.
void requireSameIdentity(Database& database, Archive& archive);

} // namespace zn::arkin
