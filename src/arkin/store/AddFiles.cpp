#include "arkin/store/AddFiles.h"

#include "arkin/store/Codes.h"
#include "base/Paths.h"

#include <soci/soci.h>
#include <unordered_map>
#include <unordered_set>

namespace zn::arkin {

namespace {

/// What a new file's workflow begins with.
constexpr const char* firstState = "In Work";

/// A folder into which files go, settled once for all of them.
struct TargetFolder {
    zn::Text relative; ///< below the root
    Failure failure{zn::S_OK, {}};
};

/// One request on its way.
struct Addition {
    const AddRequest* request = nullptr;
    AddOutcome* outcome = nullptr;
    TargetFolder* folder = nullptr;
    std::filesystem::path source;
    std::filesystem::path target; ///< in the local view
    bool isInPlace = false;       ///< the source is the local copy
    bool isWritable = false;      ///< the local copy, already
    LocalCopy copy;
    bool wroteTarget = false;

    bool good() const { return outcome->status == zn::S_OK; }
    void fail(Failure failure)
    {
        outcome->status = failure.status;
        outcome->sentence = std::move(failure.sentence);
    }
};

/// Failures of one file; those that stop the whole batch pass through.
template <class Work> void forOne(Addition& addition, Work work)
{
    try {
        work();
    } catch (const zn::StatusError& error) {
        if (error.status() == E_ARK_ARCHIVE || error.status() == E_ARK_DISK_FULL)
            throw;
        addition.fail({error.status(), error.what()});
    }
}

class Adder {
public:
    Adder(Vault& vault, std::span<const AddRequest> requests)
        : m_vault(vault)
        , m_outcomes(requests.size())
        , m_additions(requests.size())
        , m_batch(vault.archive())
    {
        for (std::size_t i = 0; i < requests.size(); ++i) {
            m_additions[i].request = &requests[i];
            m_additions[i].outcome = &m_outcomes[i];
        }
    }

    std::vector<AddOutcome> run()
    {
        m_vault.permissions().refresh();
        for (Addition& addition : m_additions)
            forOne(addition, [&] { resolve(addition); });
        refuseTakenNames();
        for (Addition& addition : m_additions) {
            if (addition.good())
                forOne(addition, [&] { takeContent(addition); });
        }
        m_batch.publish();
        try {
            writeMissingCopies();
            store();
        } catch (...) {
            m_vault.folders().forget();
            removeWrittenCopies();
            throw;
        }
        return std::move(m_outcomes);
    }

private:
    void resolve(Addition& addition);
    void settle(const zn::Text& path, TargetFolder& folder);
    void requireSafeNewFolders(const zn::Text& relative);
    void refuseTakenNames();
    void takeContent(Addition& addition);
    void writeMissingCopies();
    void removeWrittenCopies();
    void store();
    void insertRows();

    Vault& m_vault;
    std::vector<AddOutcome> m_outcomes;
    std::vector<Addition> m_additions;
    std::unordered_map<zn::Text, TargetFolder> m_folders;
    ArchiveBatch m_batch;
};

void Adder::resolve(Addition& addition)
{
    const AddRequest& request = *addition.request;
    addition.outcome->path = zn::pathAppend(zn::withoutTrailingSeparators(request.folder), request.name);
    const auto [folder, isNew] = m_folders.try_emplace(request.folder);
    if (isNew)
        settle(folder->first, folder->second);
    addition.folder = &folder->second;
    if (zn::failed(addition.folder->failure.status)) {
        addition.fail(addition.folder->failure);
        return;
    }
    requireGoodNewName(request.name);
    addition.source = m_vault.local().toMachine(request.source);
    addition.isInPlace = request.source == addition.outcome->path;
    if (addition.isInPlace) {
        addition.target = addition.source;
    } else {
        addition.target = m_vault.local().toMachine(addition.outcome->path);
        std::error_code error;
        addition.isInPlace = std::filesystem::equivalent(addition.source, addition.target, error);
    }
}

/// Rights are asked for again inside the transaction.
void Adder::settle(const zn::Text& path, TargetFolder& folder)
{
    try {
        const auto relative = m_vault.local().relativePath(path);
        if (!relative)
            throw zn::StatusError(E_ARK_NOT_IN_VAULT,
                "The folder " + m_vault.local().shown(path) + " is not in the vault's folder "
                    + m_vault.local().shown(m_vault.local().root()) + ".");
        requireSafeNewFolders(*relative);
        for (const zn::Text& part : pathParts(*relative))
            requireGoodName(part);
        folder.relative = *relative;
        m_vault.permissions().require(m_vault.folders().findNearest(*relative), Right::Add);
    } catch (const zn::StatusError& error) {
        folder.failure = {error.status(), error.what()};
    }
}

/// Folders that are to be made; one that the vault has may bear any name that it could once get.
void Adder::requireSafeNewFolders(const zn::Text& relative)
{
    zn::Text path;
    for (const zn::Text& part : pathParts(relative)) {
        path = zn::pathAppend(path, part);
        if (!m_vault.folders().find(path))
            requireGoodNewName(part);
    }
}

/// Also inside the batch: the second of two files for one place is refused. Asked once before the contents are copied
/// and once more inside the transaction.
void Adder::refuseTakenNames()
{
    std::vector<zn::Text> paths;
    for (const Addition& addition : m_additions)
        paths.push_back(addition.outcome->path);
    const std::vector<Place> taken = m_vault.findAll(paths);
    std::unordered_set<std::string> seen;
    for (std::size_t i = 0; i < m_additions.size(); ++i) {
        Addition& addition = m_additions[i];
        if (!addition.good() || (taken[i].fileId == 0 && seen.insert(nameKey(zn::canonicalPath(paths[i]))).second))
            continue;
        addition.outcome->place = taken[i];
        addition.fail({E_ARK_NAME_ALREADY_EXISTS,
            "A file named \"" + zn::toUtf8(addition.request->name) + "\" exists in the folder already."});
    }
}

void Adder::takeContent(Addition& addition)
{
    LocalFile source(addition.source);
    addition.copy.modifiedNs = addition.isInPlace ? source.settledTime() : 0;
    addition.isWritable = addition.isInPlace && source.isWritable();
    addition.copy.content = m_batch.put(source);
    if (addition.isInPlace)
        return;
    const auto standing = m_vault.local().contentAt(addition.target, std::nullopt);
    if (standing && *standing != addition.copy.content)
        throw zn::StatusError(
            E_ARK_LOCAL_FILE_CHANGED, "Another file stands at " + addition.target.string() + ". Move it away first.");
    addition.isInPlace = standing.has_value();
}

void Adder::writeMissingCopies()
{
    for (Addition& addition : m_additions) {
        if (!addition.good())
            continue;
        forOne(addition, [&] {
            if (addition.isInPlace) {
                if (!addition.isWritable)
                    m_vault.local().setReadOnly(addition.target, false);
                return;
            }
            addition.copy = m_vault.local().write({}, addition.copy.content, addition.target, false);
            addition.wroteTarget = true;
        });
    }
}

void Adder::removeWrittenCopies()
{
    std::error_code error;
    for (const Addition& addition : m_additions) {
        if (addition.wroteTarget)
            std::filesystem::remove(addition.target, error);
    }
}

void Adder::store()
{
    Transaction transaction(m_vault.database());
    refuseTakenNames();
    m_vault.permissions().refresh();
    for (auto& [path, folder] : m_folders)
        settle(path, folder);
    std::vector<Addition*> rows;
    for (Addition& addition : m_additions) {
        if (addition.good() && zn::failed(addition.folder->failure.status))
            addition.fail(addition.folder->failure);
        if (addition.good())
            rows.push_back(&addition);
    }
    if (rows.empty())
        return;
    std::int32_t fileId = m_vault.database().allocateIds("files", static_cast<std::int32_t>(rows.size()));
    for (Addition* addition : rows) {
        addition->outcome->place = {fileId++, m_vault.folders().ensure(addition->folder->relative)};
        addition->copy.place = addition->outcome->place;
    }
    insertRows();
    transaction.commit();
}

void Adder::insertRows()
{
    const Caller& caller = m_vault.caller();
    const std::int32_t vaultId = m_vault.info().id;
    const long long now = m_vault.clock().now();
    Place place;
    std::string name, key, hash;
    const std::string state = firstState;
    long long size = 0;
    soci::session& session = m_vault.database().session();
    soci::statement file = (session.prepare << "INSERT INTO files (id, vault_id, name, latest_version, deleted_at, "
                                               "deleted_by) VALUES (:i, :v, :n, 1, 0, '')",
        soci::use(place.fileId), soci::use(vaultId), soci::use(name));
    soci::statement folder
        = (session.prepare << "INSERT INTO file_folders (folder_id, name_key, file_id) VALUES (:d, :k, :f)",
            soci::use(place.folderId), soci::use(key), soci::use(place.fileId));
    soci::statement version = (session.prepare
            << "INSERT INTO versions (file_id, version, content, content_size, comment_text, user_name, made_at, "
               "revision, state) VALUES (:f, 1, :h, :s, '', :u, :t, '', :w)",
        soci::use(place.fileId), soci::use(hash), soci::use(size), soci::use(caller.user), soci::use(now),
        soci::use(state));
    soci::statement checkOut = (session.prepare
            << "INSERT INTO check_outs (file_id, folder_id, user_name, machine, taken_at, base_version, card_open, "
               "references_open, run_id) VALUES (:f, :d, :u, :m, :t, 0, 1, 1, :r)",
        soci::use(place.fileId), soci::use(place.folderId), soci::use(caller.user), soci::use(caller.machine),
        soci::use(now), soci::use(caller.run));
    std::vector<LocalCopy> copies;
    for (const Addition& addition : m_additions) {
        if (!addition.good())
            continue;
        place = addition.outcome->place;
        name = zn::toUtf8(addition.request->name);
        key = nameKey(addition.request->name);
        hash = addition.copy.content.hash;
        size = addition.copy.content.size;
        for (soci::statement* statement : {&file, &folder, &version, &checkOut})
            statement->execute(true);
        copies.push_back(addition.copy);
    }
    m_vault.local().record(copies);
}

} // namespace

std::vector<AddOutcome> addFiles(Vault& vault, std::span<const AddRequest> requests)
{
    if (requests.empty())
        return {};
    return Adder(vault, requests).run();
}

} // namespace zn::arkin
