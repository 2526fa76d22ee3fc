#include "arkin/store/VaultPlace.h"

#include <fstream>
#include <soci/soci.h>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

std::string storedArchive(Database& database, std::int32_t vaultId)
{
    std::string folder;
    database.session() << "SELECT archive_folder FROM vaults WHERE id = :i", soci::use(vaultId), soci::into(folder);
    return folder;
}

/// What can't be looked at may be another home's.
bool isAnotherHome(const fs::path& archive, const Archive& own)
{
    std::error_code error;
    if (fs::equivalent(archive, own.folder(), error))
        return false;
    const auto status = fs::status(archive / "identity", error);
    if (status.type() == fs::file_type::not_found)
        return false;
    std::ifstream file(archive / "identity");
    std::string identity;
    return !std::getline(file, identity) || identity == own.identity();
}

void noteArchive(Store& store, std::int32_t vaultId)
{
    const std::string archive = store.archive().folder().string();
    Transaction transaction(store.database());
    store.database().session() << "UPDATE vaults SET archive_folder = :a WHERE id = :i", soci::use(archive),
        soci::use(vaultId);
    transaction.commit();
}

} // namespace

std::optional<fs::path> otherHome(Store& store, const VaultInfo& vault)
{
    const fs::path stored = storedArchive(store.database(), vault.id);
    if (stored == store.archive().folder())
        return {};
    if (!stored.empty() && isAnotherHome(stored, store.archive()))
        return stored;
    noteArchive(store, vault.id);
    return {};
}

void requireOwnRoot(Store& store, const VaultInfo& vault)
{
    const auto other = otherHome(store, vault);
    if (!other)
        return;
    const std::string home = store.archive().folder().parent_path().string();
    throw zn::StatusError(E_ARK_LOCAL_FILE_FAILED,
        "The home " + home + " is a copy of " + other->parent_path().string() + ", which works with the folder "
            + store.files().shown(vault.root) + ". Give the copy a folder of its own by 'arkin vault "
            + "relocate DIR --home " + home + "', or remove the former home.");
}

void writeRoot(Store& store, const VaultInfo& vault, zn::TextView root)
{
    const std::string storedRoot = zn::toUtf8(root), archive = store.archive().folder().string();
    store.database().session() << "UPDATE vaults SET root = :r, archive_folder = :a WHERE id = :i",
        soci::use(storedRoot), soci::use(archive), soci::use(vault.id);
}

} // namespace zn::arkin
