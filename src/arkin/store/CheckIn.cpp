#include "arkin/store/CheckIn.h"

#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"
#include "arkin/store/GiveUp.h"
#include "arkin/store/Outlines.h"

#include <algorithm>
#include <soci/soci.h>
#include <unistd.h>
#include <unordered_map>
#include <unordered_set>

namespace zn::arkin {

namespace {

constexpr auto readOnlyPermissions = std::filesystem::perms(0444);

struct Arrival {
    CheckOutRow checkOut;
    std::optional<FileRow> row;
    std::optional<LocalCopy> known; ///< the local copy by the record
    std::filesystem::path path;
    LocalCopy copy;
    KnownOutline outline;
};

void protect(const Arrival& arrival)
{
    std::error_code ignored;
    std::filesystem::permissions(arrival.path, readOnlyPermissions, ignored);
}

/// What fails for one file and would fail for all.
constexpr auto concernsAll = {E_ARK_ARCHIVE, E_ARK_DISK_FULL};

class CheckInWork {
public:
    CheckInWork(Vault& vault, const CheckInPlan& plan, zn::TextView comment, std::vector<LeftOut>* leftOut)
        : m_vault(vault)
        , m_comment(zn::toUtf8(comment))
        , m_batch(vault.archive())
        , m_leftOut(leftOut)
    {
        for (const CheckOutRow& row : plan.files)
            m_arrivals.emplace_back().checkOut = row;
    }

    std::vector<CheckedIn> run()
    {
        m_vault.permissions().refresh();
        forEach([&](Arrival& arrival) {
            m_vault.require({arrival.checkOut.fileId, arrival.checkOut.folderId}, Right::Add);
        });
        takeContents();
        m_batch.publish();
        readOutlines();
        store();
        for (const FileVersion& file : m_identical)
            m_vault.actingRun()->noteIdentical(file.fileId, file.version);
        protectLocalCopies();
        std::vector<CheckedIn> versions;
        for (const Arrival& arrival : m_arrivals)
            versions.push_back({arrival.outline.file, arrival.outline.problem});
        versions.insert(versions.end(), m_repeated.begin(), m_repeated.end());
        return versions;
    }

private:
    template <class Work> void forEach(const Work& work);
    std::vector<std::int32_t> ids() const;
    void takeContents();
    void takeContent(Arrival& arrival, LocalView::MachineFolders& folders);
    void readOutlines();
    void store();
    void requireUnchangedCheckOuts();
    void takeOutRepeated();
    void writeVersions();
    void carryCardsAndReferencesOn();
    void keepOutlines();
    void pointReferencesAtNewVersions();
    void deleteCheckOuts();
    void protectLocalCopies();

    Vault& m_vault;
    std::string m_comment;
    std::vector<Arrival> m_arrivals;
    std::vector<CheckedIn> m_repeated;
    std::vector<FileVersion> m_identical; ///< of these, what the run wants no version of
    ArchiveBatch m_batch;
    std::vector<LeftOut>* m_leftOut;
};

/// Does the work for each file that is still to come in. One that fails doesn't come in.
template <class Work> void CheckInWork::forEach(const Work& work)
{
    std::erase_if(m_arrivals, [&](Arrival& arrival) {
        const Place place{arrival.checkOut.fileId, arrival.checkOut.folderId};
        return !worksFor(place, m_leftOut, concernsAll, [&] { work(arrival); });
    });
}

std::vector<std::int32_t> CheckInWork::ids() const
{
    std::vector<std::int32_t> ids;
    for (const Arrival& arrival : m_arrivals)
        ids.push_back(arrival.checkOut.fileId);
    return ids;
}

void CheckInWork::takeContents()
{
    std::vector<Place> places;
    for (const Arrival& arrival : m_arrivals)
        places.push_back({arrival.checkOut.fileId, arrival.checkOut.folderId});
    const auto copies = m_vault.local().copies(places);
    const auto rows = m_vault.files().rows(ids());
    for (std::size_t i = 0; i < m_arrivals.size(); ++i) {
        m_arrivals[i].row = rows[i];
        m_arrivals[i].known = copies[i];
    }
    LocalView::MachineFolders folders;
    forEach([&](Arrival& arrival) { takeContent(arrival, folders); });
}

void CheckInWork::takeContent(Arrival& arrival, LocalView::MachineFolders& folders)
{
    if (!arrival.row || arrival.row->deleted)
        throw zn::StatusError(E_ARK_NOT_IN_VAULT,
            (arrival.row ? "\"" + zn::toUtf8(arrival.row->name) + "\"" : std::string("A file"))
                + " was deleted from the vault meanwhile.");
    const Place place{arrival.checkOut.fileId, arrival.checkOut.folderId};
    arrival.path = m_vault.local().toMachine(place.folderId, arrival.row->name, folders);
    if (access(arrival.path.c_str(), F_OK) != 0)
        throw zn::StatusError(E_ARK_LOCAL_FILE_MISSING,
            "The local copy " + arrival.path.string()
                + " is missing, so there is nothing to check in. Get the file again or undo its check-out.");
    LocalFile file(arrival.path);
    const std::int64_t settled = file.settledTime();
    const auto& known = arrival.known;
    const bool unchanged = known && settled != 0 && known->modifiedNs == settled && known->content.size == file.size()
        && m_vault.archive().holds(known->content.hash);
    // A known content may be one that only this check-out refers to, which the batch keeps from being cleared away.
    arrival.copy = {place, unchanged ? known->content : m_batch.put(file), settled};
}

void CheckInWork::readOutlines()
{
    Outlines outlines(m_vault);
    for (Arrival& arrival : m_arrivals) {
        const CheckOutRow& row = arrival.checkOut;
        arrival.outline = outlines.read(
            {row.fileId, row.versionToCome()}, arrival.copy.place, arrival.row->name, arrival.copy.content);
    }
}

void CheckInWork::store()
{
    Transaction transaction(m_vault.database());
    requireUnchangedCheckOuts();
    takeOutRepeated();
    writeVersions();
    carryCardsAndReferencesOn();
    keepOutlines();
    pointReferencesAtNewVersions();
    deleteCheckOuts();
    std::vector<LocalCopy> copies;
    for (const Arrival& arrival : m_arrivals)
        copies.push_back(arrival.copy);
    m_vault.local().record(copies);
    transaction.commit();
}

/// Between the plan and now the check-out may have been given up, and cards may have been written.
void CheckInWork::requireUnchangedCheckOuts()
{
    const auto now = m_vault.files().checkOuts(ids());
    std::size_t i = 0;
    forEach([&](Arrival& arrival) {
        const auto& row = now[i++];
        if (!row || row->baseVersion != arrival.checkOut.baseVersion)
            throw zn::StatusError(E_ARK_NOT_CHECKED_OUT,
                "The check-out of \"" + zn::toUtf8(arrival.row->name) + "\" was given up meanwhile.");
        if (!m_vault.isMine(*row))
            throw checkedOutElsewhere(m_vault, *row);
        arrival.checkOut = *row;
    });
}

/// Files that make no further version. A worker may go away between the check-in and the end of its run, and the one
/// that carries the run out anew brings the same once more. And a run may want no version of what is as it was.
void CheckInWork::takeOutRepeated()
{
    ActingRun* const run = m_vault.actingRun();
    if (!run)
        return;
    std::vector<FileVersion> bases;
    for (const Arrival& arrival : m_arrivals)
        bases.push_back({arrival.checkOut.fileId, arrival.checkOut.baseVersion});
    const auto versions = m_vault.files().versions(bases);
    std::size_t i = 0;
    std::erase_if(m_arrivals, [&](const Arrival& arrival) {
        const auto& base = versions[i++];
        const bool isRepeated = base && base->run == run->id();
        if (!base || base->content != arrival.copy.content || (!isRepeated && !run->keepsIdentical()))
            return false;
        (isRepeated ? dropCheckOut : foldCheckOut)(m_vault.database(), arrival.checkOut);
        m_vault.local().record({&arrival.copy, 1});
        protect(arrival);
        m_repeated.push_back({{arrival.checkOut.fileId, base->version}, {}});
        if (!isRepeated)
            m_identical.push_back({arrival.checkOut.fileId, base->version});
        return true;
    });
}

void CheckInWork::writeVersions()
{
    std::int32_t fileId = 0, version = 0, base = 0;
    std::string hash;
    long long size = 0;
    const long long now = m_vault.clock().now();
    const std::string& user = m_vault.caller().user;
    const std::int32_t run = m_vault.caller().run;
    soci::session& session = m_vault.database().session();
    soci::statement first = (session.prepare
            << "UPDATE versions SET content = :h, content_size = :s, comment_text = :c, user_name = :u, made_at = :t, "
               "run_id = :r WHERE file_id = :f AND version = 1",
        soci::use(hash), soci::use(size), soci::use(m_comment), soci::use(user), soci::use(now), soci::use(run),
        soci::use(fileId));
    soci::statement next = (session.prepare
            << "INSERT INTO versions (file_id, version, content, content_size, comment_text, user_name, made_at, "
               "revision, state, run_id) SELECT file_id, :v, :h, :s, :c, :u, :t, revision, state, :r FROM versions "
               "WHERE file_id = :f AND version = :b",
        soci::use(version), soci::use(hash), soci::use(size), soci::use(m_comment), soci::use(user), soci::use(now),
        soci::use(run), soci::use(fileId), soci::use(base));
    soci::statement latest = (session.prepare << "UPDATE files SET latest_version = :v WHERE id = :f",
        soci::use(version), soci::use(fileId));
    for (const Arrival& arrival : m_arrivals) {
        fileId = arrival.checkOut.fileId;
        base = arrival.checkOut.baseVersion;
        version = arrival.checkOut.versionToCome();
        hash = arrival.copy.content.hash;
        size = arrival.copy.content.size;
        if (base == 0) {
            first.execute(true);
        } else {
            next.execute(true);
            latest.execute(true);
        }
    }
}

void CheckInWork::carryCardsAndReferencesOn()
{
    for (const Arrival& arrival : m_arrivals) {
        const CheckOutRow& row = arrival.checkOut;
        if (!row.cardOpen)
            m_vault.cards().copy(row.fileId, row.baseVersion, row.versionToCome());
        if (!row.referencesOpen)
            m_vault.references().copy(row.fileId, row.baseVersion, row.versionToCome());
    }
}

void CheckInWork::keepOutlines()
{
    Outlines outlines(m_vault);
    std::vector<Place> isNew;
    for (const Arrival& arrival : m_arrivals) {
        outlines.keep(arrival.outline, arrival.checkOut.baseVersion);
        if (arrival.checkOut.baseVersion == 0)
            isNew.push_back(arrival.copy.place);
    }
    outlines.connect(isNew);
}

/// Files that come in together refer to each other's new versions.
void CheckInWork::pointReferencesAtNewVersions()
{
    std::unordered_map<std::int32_t, std::int32_t> newVersions;
    std::vector<FileVersion> asked;
    for (const Arrival& arrival : m_arrivals) {
        newVersions[arrival.checkOut.fileId] = arrival.checkOut.versionToCome();
        asked.push_back({arrival.checkOut.fileId, arrival.checkOut.versionToCome()});
    }
    std::vector<ReferenceRow> changed;
    for (const auto& references : m_vault.references().from(asked)) {
        for (ReferenceRow row : references) {
            const auto target = newVersions.find(row.toFileId);
            if (target == newVersions.end() || target->second == row.toVersion)
                continue;
            row.toVersion = target->second;
            changed.push_back(row);
        }
    }
    m_vault.references().write(changed);
}

void CheckInWork::deleteCheckOuts()
{
    std::int32_t fileId = 0;
    soci::statement statement
        = (m_vault.database().session().prepare << "DELETE FROM check_outs WHERE file_id = :f", soci::use(fileId));
    for (const std::int32_t id : ids()) {
        fileId = id;
        statement.execute(true);
    }
}

/// The versions are in the vault by now, so that a copy which can't be protected, or has gone, is no failure of the
/// check-in. The next get looks at it again.
void CheckInWork::protectLocalCopies()
{
    for (const Arrival& arrival : m_arrivals)
        protect(arrival);
}

/// Whether the local copy of a file that nobody has checked out holds something that the vault doesn't know.
bool hasUnknownCopy(Vault& vault, const Place& place)
{
    const auto path = vault.local().toMachine(vault.pathOf(place));
    const auto content = vault.local().contentAt(path, vault.local().copies({&place, 1}).front());
    if (!content)
        return false;
    const auto history = vault.files().history(place.fileId);
    return std::none_of(
        history.begin(), history.end(), [&](const VersionRow& version) { return version.content == *content; });
}

/// Checks a file out without touching its local copy.
CheckOutRow checkOutAsItStands(Vault& vault, const Place& place)
{
    Transaction transaction(vault.database());
    vault.require(place, Right::Add);
    if (const auto row = vault.files().checkOut(place.fileId))
        throw checkedOutElsewhere(vault, *row);
    insertCheckOut(vault, place, vault.file(place.fileId).latestVersion);
    transaction.commit();
    return requireMine(vault, place.fileId);
}

} // namespace

CheckInPlan planCheckIn(Vault& vault, std::span<const Place> places, std::vector<LeftOut>* leftOut)
{
    std::vector<std::int32_t> ids;
    for (const Place& place : places)
        ids.push_back(place.fileId);
    const auto checkOuts = vault.files().checkOuts(ids);
    CheckInPlan plan;
    std::unordered_set<std::int32_t> seen;
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (!seen.insert(places[i].fileId).second)
            continue;
        worksFor(places[i], leftOut, concernsAll, [&] {
            if (!checkOuts[i] || !vault.isMine(*checkOuts[i]))
                requireNotGivenUp(vault, places[i].fileId);
            if (checkOuts[i] && !vault.isMine(*checkOuts[i]))
                throw checkedOutElsewhere(vault, *checkOuts[i]);
            if (checkOuts[i])
                plan.files.push_back(*checkOuts[i]);
            else if (hasUnknownCopy(vault, places[i]))
                plan.files.push_back(checkOutAsItStands(vault, places[i]));
        });
    }
    return plan;
}

std::vector<CheckedIn> checkIn(
    Vault& vault, const CheckInPlan& plan, zn::TextView comment, std::vector<LeftOut>* leftOut)
{
    if (plan.files.empty())
        return {};
    return CheckInWork(vault, plan, comment, leftOut).run();
}

} // namespace zn::arkin
