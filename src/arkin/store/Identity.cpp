#include "arkin/store/Identity.h"

#include "arkin/store/Codes.h"
#include "arkin/store/Uuid.h"

#include <soci/soci.h>

namespace zn::arkin {

namespace {

std::string storedIdentity(Database& database)
{
    std::string identity;
    database.session() << "SELECT id FROM store_identity", soci::into(identity);
    return database.session().got_data() ? identity : std::string();
}

/// Of the version that was made last; empty if there is none.
std::string newestContent(Database& database)
{
    std::string hash;
    database.session() << "SELECT content FROM versions ORDER BY made_at DESC, file_id DESC", soci::into(hash);
    return database.session().got_data() ? hash : std::string();
}

[[noreturn]] void refuse(const Archive& archive, const std::string& why)
{
    throw zn::StatusError(E_ARK_ARCHIVE,
        why + " Nothing was changed. Bring database and archive back from one backup. The archive is in "
            + archive.folder().string() + ".");
}

/// What both are to have, as far as they may have it.
std::string commonIdentity(Database& database, const Archive& archive)
{
    std::string ofDatabase = storedIdentity(database), ofArchive = archive.identity();
    const std::string newest = newestContent(database);
    if (!ofDatabase.empty() && !ofArchive.empty())
        refuse(archive, "The database and the archive belong to different vaults.");
    if (!ofDatabase.empty()) {
        if (!newest.empty() && !archive.holds(newest))
            refuse(archive, "The archive is missing, or not the one of the database.");
        return ofDatabase;
    }
    if (newest.empty() ? !archive.empty() : !archive.holds(newest))
        refuse(archive, "The database is new or not the one of the archive.");
    return ofArchive.empty() ? newUuid() : ofArchive;
}

} // namespace

void requireSameIdentity(Database& database, Archive& archive)
{
    const auto agree = [&] {
        const std::string identity = storedIdentity(database);
        return !identity.empty() && identity == archive.identity();
    };
    if (agree())
        return;
    Transaction transaction(database); // one process at a time gives an identity
    if (agree())
        return;
    const std::string identity = commonIdentity(database, archive);
    // The archive first: a database without an identity finds it there if this is interrupted.
    if (archive.identity().empty())
        archive.setIdentity(identity);
    database.session() << "DELETE FROM store_identity";
    database.session() << "INSERT INTO store_identity (id) VALUES (:i)", soci::use(identity);
    transaction.commit();
}

} // namespace zn::arkin
