#include "arkin/store/StoreRepair.h"

#include "arkin/store/Codes.h"
#include "platform/Sqlite.h"
#include "platform/SqliteRowSums.h"

#include <algorithm>
#include <fcntl.h>
#include <fmt/format.h>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

std::string nameOf(const zn::DamagedRow& damaged) { return fmt::format("{}:{}", damaged.table, damaged.row); }

class StoreRepair {
public:
    StoreRepair(Store& store, const RepairSetting& setting, const Progress& progress)
        : m_store(store)
        , m_database(store.database())
        , m_setting(setting)
        , m_progress(progress)
    {
    }

    std::vector<RepairFinding> run()
    {
        requireSoundFile();
        openBackup();
        const auto damaged = damagedRows();
        requireDamaged(damaged);
        for (const zn::DamagedRow& row : damaged)
            mendRow(row);
        mendContents();
        addWhatIsLeft();
        return std::move(m_findings);
    }

private:
    /// Rows of a broken file can't be written safely.
    void requireSoundFile()
    {
        auto problems = zn::sqliteProblems(m_database.session());
        for (const SchemaArea* area : m_setting.areas) {
            for (const std::string& table : missingTables(m_database, *area))
                problems.push_back("it has no table " + table);
            if (problems.empty() && isUpToDate(m_database, *area))
                for (const std::string& table : changedTables(m_database, *area))
                    problems.push_back("it has " + table + " with other columns");
        }
        if (!problems.empty())
            throw zn::StatusError(E_ARK_DATABASE,
                "The database file itself is damaged (" + problems.front()
                    + "), so nothing was changed. Bring the whole home back by 'arkin vault restore'.");
    }

    void openBackup()
    {
        if (!m_setting.backup)
            return;
        m_backup.emplace(*m_setting.backup, BackupFolder::Use::Read);
        if (m_backup->archive().identity() != m_store.archive().identity())
            throw zn::StatusError(zn::E_INVALIDARG,
                "The backup in " + m_backup->folder().string() + " is another vault's, so nothing was changed.");
        for (const BackupCopy& copy : m_backup->copies())
            if (copy.problems().empty())
                m_copies.push_back(copy);
        std::ranges::reverse(m_copies);
    }

    std::vector<zn::DamagedRow> damagedRows()
    {
        std::vector<zn::DamagedRow> damaged;
        for (const SchemaArea* area : m_setting.areas)
            for (const std::string& table :
                isUpToDate(m_database, *area) ? summedTablesOf(*area) : std::vector<std::string>())
                for (zn::DamagedRow& row : zn::sqliteDamagedRows(m_database.session(), table))
                    damaged.push_back(std::move(row));
        return damaged;
    }

    void requireDamaged(const std::vector<zn::DamagedRow>& damaged)
    {
        for (const std::string& name : m_setting.accepted)
            if (std::ranges::find(damaged, name, nameOf) == damaged.end())
                throw zn::StatusError(zn::E_INVALIDARG,
                    "'" + name
                        + "' is no damaged row, so nothing was changed. Name one as TABLE:ROW, by what 'arkin vault "
                          "check' says.");
    }

    void mendRow(const zn::DamagedRow& damaged)
    {
        m_findings.push_back({damaged.sentence, false, {}});
        RepairFinding& finding = m_findings.back();
        if (std::ranges::find(m_setting.accepted, nameOf(damaged)) != m_setting.accepted.end()) {
            Transaction transaction(m_database);
            const std::string former = zn::sqliteShownRow(m_database.session(), damaged);
            zn::sqliteAcceptRow(m_database.session(), damaged);
            finish(transaction, finding, damaged, former, "it is accepted as it stands");
            return;
        }
        for (const BackupCopy& copy : m_copies)
            if (mendRowFrom(copy, damaged, finding))
                return;
        finding.how = m_setting.backup ? "no backup in " + m_setting.backup->string()
                + " has the row as it was written last; '--accept " + nameOf(damaged) + "' takes it as it stands"
                                       : "no backup was named by --from";
    }

    bool mendRowFrom(const BackupCopy& copy, const zn::DamagedRow& damaged, RepairFinding& finding)
    {
        try {
            soci::session before;
            copy.open(before);
            Transaction transaction(m_database);
            const std::string former = zn::sqliteShownRow(m_database.session(), damaged);
            if (!zn::sqliteMendRow(m_database.session(), damaged, before))
                return false;
            finish(transaction, finding, damaged, former, "the row is as in the backup " + copy.name());
            return true;
        } catch (const soci::soci_error& error) {
            finding.how
                = "the database refuses the row of the backup " + copy.name() + ": " + error.get_error_message();
            return true;
        }
    }

    void finish(Transaction& transaction, RepairFinding& finding, const zn::DamagedRow& damaged,
        const std::string& former, const std::string& how)
    {
        const std::int32_t id = m_database.allocateIds("repairs");
        const long long now = m_store.clock().now();
        const std::string user = Caller::current().user;
        m_database.session() << "INSERT INTO repairs (id, made_at, user_name, table_name, row_number, how, former) "
                                "VALUES (:i, :t, :u, :n, :r, :h, :f)",
            soci::use(id), soci::use(now), soci::use(user), soci::use(damaged.table), soci::use(damaged.row),
            soci::use(how), soci::use(former);
        if (!m_setting.dryRun)
            transaction.commit();
        finding.mended = true;
        finding.how = how;
    }

    void mendContents()
    {
        const auto holders = heldContents(m_database.session());
        for (std::size_t i = 0; i < holders.size(); ++i) {
            if (auto problem = problemOf(m_store.archive(), holders[i])) {
                m_findings.push_back({std::move(*problem), false, {}});
                mendContent(holders[i], m_findings.back());
            }
            if (m_progress)
                m_progress(static_cast<std::int64_t>(i) + 1, static_cast<std::int64_t>(holders.size()));
        }
    }

    void mendContent(const Holder& holder, RepairFinding& finding)
    {
        if (!m_backup) {
            finding.how = "no backup was named by --from";
            return;
        }
        if (m_backup->archive().problemOf(holder.content)) {
            finding.how = "the backup in " + m_backup->folder().string()
                + (m_backup->archive().holds(holder.content.hash) ? " has it damaged as well" : " doesn't have it");
            return;
        }
        if (!m_setting.dryRun) {
            ArchiveBatch batch(m_store.archive());
            FileHandle source(m_backup->archive().pathOf(holder.content.hash), O_RDONLY | O_NOFOLLOW, E_ARK_ARCHIVE);
            if (!batch.putAs(holder.content, source)) {
                finding.how = "the backup changed while it was read";
                return;
            }
            batch.publish();
        }
        finding.mended = true;
        finding.how = "the backup has the content, and its hash is right";
    }

    /// What follows from a damaged row may be right by now, so this is looked at last.
    void addWhatIsLeft()
    {
        auto problems = checkStore(m_store).problems;
        if (m_setting.otherProblems)
            for (std::string& problem : m_setting.otherProblems())
                problems.push_back(std::move(problem));
        for (std::string& problem : problems)
            if (std::ranges::find(m_findings, problem, &RepairFinding::problem) == m_findings.end())
                m_findings.push_back({std::move(problem), false,
                    m_setting.dryRun ? "it may follow from what stands above; a repair that isn't dry tells"
                                     : "no single row or content mends it; 'arkin vault restore' brings all back"});
    }

    Store& m_store;
    Database& m_database;
    const RepairSetting& m_setting;
    const Progress& m_progress;
    std::optional<BackupFolder> m_backup;
    std::vector<BackupCopy> m_copies; ///< whole ones, the newest first
    std::vector<RepairFinding> m_findings;
};

} // namespace

std::vector<RepairFinding> repairStore(Store& store, const RepairSetting& setting, const Progress& progress)
{
    return StoreRepair(store, setting, progress).run();
}

} // namespace zn::arkin
