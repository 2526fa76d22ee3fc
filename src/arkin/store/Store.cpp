#include "arkin/store/Codes.h"
#include "arkin/store/Identity.h"
#include "arkin/store/Schema.h"
#include "arkin/store/Vault.h"
#include "base/Paths.h"

#include <soci/soci.h>

namespace zn::arkin {

using zn::Text;
using zn::TextView;

Store::Store(
    const std::string& connection, const std::filesystem::path& archiveFolder, zn::FileSystem& files, zn::Clock& clock)
    : m_database(connection)
    , m_archive(archiveFolder)
    , m_files(files)
    , m_clock(clock)
{
    applySchema(m_database, vaultSchema);
    requireSameIdentity(m_database, m_archive);
    m_archive.removeArrivals();
}

std::vector<VaultInfo> Store::vaults()
{
    VaultInfo info;
    std::string name, root;
    soci::statement statement = (m_database.session().prepare
            << "SELECT vaults.id, vaults.name, vaults.root, folders.id FROM vaults JOIN folders "
               "ON folders.vault_id = vaults.id AND folders.parent_id = 0 ORDER BY vaults.name_key",
        soci::into(info.id), soci::into(name), soci::into(root), soci::into(info.rootFolderId));
    statement.execute();
    std::vector<VaultInfo> infos;
    while (statement.fetch()) {
        info.name = zn::toText(name);
        info.root = zn::toText(root);
        infos.push_back(info);
    }
    return infos;
}

std::optional<VaultInfo> Store::findVault(TextView name)
{
    for (const VaultInfo& info : vaults()) {
        if (zn::equalNoCase(info.name, name))
            return info;
    }
    return std::nullopt;
}

Text Store::requireRoot(TextView path, std::int32_t except)
{
    Text root = zn::withoutTrailingSeparators(zn::canonicalPath(path));
    if (hasUnsafeCharacter(root))
        throw zn::StatusError(E_ARK_BAD_NAME,
            "The folder " + m_files.shown(root)
                + " can't be a vault's: its path has a character that tasks can't work with (\", <, > or a control "
                  "character). Choose or rename a folder.");
    for (const VaultInfo& other : vaults()) {
        if (other.id != except && (zn::isInFolder(root, other.root) || zn::isInFolder(other.root, root)))
            throw zn::StatusError(E_ARK_BAD_NAME,
                "The folder " + m_files.shown(root) + " overlaps with that of the vault \"" + zn::toUtf8(other.name)
                    + "\". Choose another folder.");
    }
    return root;
}

void Store::makeRoot(TextView root)
{
    std::error_code error;
    std::filesystem::create_directories(m_files.toMachine(root), error);
    if (error)
        throw zn::StatusError(E_ARK_LOCAL_FILE_FAILED,
            "Could not create the vault's folder " + m_files.shown(root) + ": " + error.message() + ".");
}

VaultInfo Store::createVault(TextView name, TextView root)
{
    requireGoodName(name);
    VaultInfo info{0, Text(name), requireRoot(root), 0};
    makeRoot(info.root);
    const std::string storedName = zn::toUtf8(name), key = nameKey(name), storedRoot = zn::toUtf8(info.root);
    const std::string archive = m_archive.folder().string();
    Transaction transaction(m_database);
    if (findVault(name))
        throw zn::StatusError(E_ARK_NAME_ALREADY_EXISTS, "A vault named \"" + storedName + "\" exists already.");
    requireRoot(root); // somebody else may have been quicker
    info.id = m_database.allocateIds("vaults");
    info.rootFolderId = m_database.allocateIds("folders");
    m_database.session() << "INSERT INTO vaults (id, name, name_key, root, archive_folder) VALUES (:i, :n, :k, :r, :a)",
        soci::use(info.id), soci::use(storedName), soci::use(key), soci::use(storedRoot), soci::use(archive);
    m_database.session() << "INSERT INTO folders (id, vault_id, parent_id, name, name_key) VALUES (:i, :v, 0, '', '')",
        soci::use(info.rootFolderId), soci::use(info.id);
    transaction.commit();
    return info;
}

} // namespace zn::arkin
