#include "arkin/store/Vault.h"
#include "arkin/store/VaultPlace.h"

#include "arkin/store/Codes.h"

#include <pwd.h>
#include <soci/soci.h>
#include <unistd.h>

namespace zn::arkin {

using zn::Text;
using zn::TextView;

Caller Caller::current()
{
    Caller caller;
    const passwd* entry = getpwuid(geteuid());
    caller.user = entry ? entry->pw_name : std::to_string(geteuid());
    char host[256] = {};
    caller.machine = gethostname(host, sizeof host - 1) == 0 ? host : "localhost";
    return caller;
}

Vault::Vault(Store& store, const VaultInfo& info, Caller caller)
    : m_store(store)
    , m_info(info)
    , m_caller(std::move(caller))
    , m_folders(store.database(), info.id, info.rootFolderId)
    , m_files(store.database(), info.id)
    , m_cards(store.database(), info.id)
    , m_references(store.database())
    , m_permissions(store.database(), m_folders, m_caller.user)
    , m_local(store.database(), m_folders, store.archive(), store.files(), info.root, m_caller.machine)
{
    if (otherHome(store, m_info)) {
        m_local.close();
        actFor(nullptr);
    }
    m_permissions.refresh();
    int known = 0;
    database().session() << "SELECT COUNT(*) FROM users WHERE name = :n", soci::use(m_caller.user), soci::into(known);
    if (known || !m_local.isOpen())
        return;
    Transaction transaction(database());
    const long long now = clock().now();
    database().session() << "INSERT INTO users (name, first_seen) SELECT :n, :t WHERE NOT EXISTS "
                            "(SELECT 1 FROM users WHERE name = :m)",
        soci::use(m_caller.user), soci::use(now), soci::use(m_caller.user);
    transaction.commit();
}

void Vault::actFor(ActingRun* run)
{
    m_actingRun = run;
    m_caller.run = run ? run->id() : 0;
    if (!m_local.isOpen())
        database().fenceWrites([this] { requireOwnRoot(m_store, m_info); });
    else
        database().fenceWrites(run ? std::function<void()>([run] { run->requireHeld(); }) : nullptr);
}

std::optional<Place> Vault::find(TextView path)
{
    const Text text(path);
    const Place place = findAll({&text, 1}).front();
    if (place.fileId == 0)
        return std::nullopt;
    m_permissions.refresh();
    m_permissions.require(place.folderId, Right::Read);
    return place;
}

std::vector<Place> Vault::findAll(std::span<const Text> paths)
{
    std::vector<Files::NameInFolder> names(paths.size());
    std::unordered_map<Text, std::int32_t> folders;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const auto relative = m_local.relativePath(paths[i]);
        if (!relative || relative->empty())
            continue;
        const std::size_t name = relative->rfind(u'\\') + 1;
        const auto [folder, isNew] = folders.try_emplace(relative->substr(0, name), 0);
        if (isNew)
            folder->second = m_folders.find(folder->first).value_or(0);
        names[i] = {folder->second, relative->substr(name)};
    }
    const std::vector<std::int32_t> ids = m_files.find(names);
    std::vector<Place> places(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (ids[i] != 0)
            places[i] = {ids[i], names[i].folderId};
    }
    return places;
}

std::optional<std::int32_t> Vault::findFolder(TextView path)
{
    const auto relative = m_local.relativePath(path);
    if (!relative)
        return std::nullopt;
    const auto folder = m_folders.find(*relative);
    if (folder) {
        m_permissions.refresh();
        m_permissions.require(*folder, Right::Read);
    }
    return folder;
}

FileRow Vault::file(std::int32_t fileId)
{
    const auto row = m_files.row(fileId);
    if (!row || row->deleted)
        throw zn::StatusError(E_ARK_NOT_IN_VAULT, "The vault has no file number " + std::to_string(fileId) + ".");
    return *row;
}

void Vault::require(const Place& place, Right right)
{
    if (m_permissions.allowed(place.folderId, right))
        return;
    const auto row = m_files.row(place.fileId);
    try {
        m_permissions.require(place.folderId, right);
    } catch (const zn::StatusError& error) {
        throw zn::StatusError(
            error.status(), (row ? "\"" + zn::toUtf8(row->name) + "\": " : std::string()) + error.what());
    }
}

VersionRow Vault::version(std::int32_t fileId, std::int32_t version)
{
    const FileRow row = file(fileId);
    if (const auto found = m_files.version(fileId, version > 0 ? version : row.latestVersion))
        return *found;
    throw zn::StatusError(E_ARK_NO_SUCH_VERSION,
        "\"" + zn::toUtf8(row.name) + "\" has no version " + std::to_string(version) + "; its latest is "
            + std::to_string(row.latestVersion) + ".");
}

bool Vault::isMine(const CheckOutRow& checkOut) const
{
    return checkOut.user == m_caller.user && checkOut.machine == m_caller.machine
        && (checkOut.run == 0 || checkOut.run == m_caller.run);
}

void Vault::setRevision(std::int32_t fileId, TextView revision)
{
    const std::string text = zn::toUtf8(revision);
    Transaction transaction(database());
    const std::int32_t latest = file(fileId).latestVersion;
    database().session() << "UPDATE versions SET revision = :r WHERE file_id = :f AND version = :v", soci::use(text),
        soci::use(fileId), soci::use(latest);
    transaction.commit();
}

void Vault::setWorkflowState(std::int32_t fileId, TextView state)
{
    const std::string text = zn::toUtf8(state);
    Transaction transaction(database());
    const std::int32_t latest = file(fileId).latestVersion;
    database().session() << "UPDATE versions SET state = :s WHERE file_id = :f AND version = :v", soci::use(text),
        soci::use(fileId), soci::use(latest);
    transaction.commit();
}

void Vault::shareFile(std::int32_t fileId, std::int32_t folderId)
{
    Transaction transaction(database());
    m_permissions.refresh();
    m_permissions.require(folderId, Right::Add);
    const Text name = file(fileId).name;
    const Files::NameInFolder wanted{folderId, name};
    if (m_files.find({&wanted, 1}).front() != 0)
        throw zn::StatusError(E_ARK_NAME_ALREADY_EXISTS,
            "A file named \"" + zn::toUtf8(name) + "\" stands in the folder \\" + zn::toUtf8(m_folders.pathOf(folderId))
                + " already.");
    const std::string key = nameKey(name);
    database().session() << "INSERT INTO file_folders (folder_id, name_key, file_id) VALUES (:d, :k, :f)",
        soci::use(folderId), soci::use(key), soci::use(fileId);
    transaction.commit();
}

std::int32_t Vault::createFolder(TextView path)
{
    const auto relative = m_local.relativePath(path);
    if (!relative)
        throw zn::StatusError(E_ARK_NOT_IN_VAULT,
            m_local.shown(path) + " is not below the vault's folder " + m_local.shown(m_local.root()) + ".");
    std::filesystem::create_directories(m_local.toMachine(path));
    try {
        Transaction transaction(database());
        m_permissions.refresh();
        m_permissions.require(m_folders.findNearest(*relative), Right::Add);
        const std::int32_t folder = m_folders.ensure(*relative);
        transaction.commit();
        return folder;
    } catch (...) {
        m_folders.forget();
        throw;
    }
}

} // namespace zn::arkin
