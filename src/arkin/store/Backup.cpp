#include "arkin/store/Backup.h"

#include "arkin/store/Codes.h"
#include "platform/Sqlite.h"

#include <fcntl.h>
#include <map>
#include <soci/soci.h>
#include <unordered_set>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

/// What is put to the archive at once: so much is done again at most after an interruption.
constexpr int contentsAtOnce = 500;
constexpr std::int64_t bytesAtOnce = 256LL * 1024 * 1024;

/// The copy is read whole before it counts: a database that is damaged doesn't take the place of a good one.
void copyWholeDatabase(soci::session& source, const fs::path& copy)
{
    zn::makePrivateFile(copy, zn::sharingOf(copy.parent_path()));
    zn::copyDatabase(source, copy);
    soci::session written;
    zn::openCopy(written, copy);
    if (const auto problems = zn::sqliteProblems(written); !problems.empty())
        throw zn::StatusError(E_ARK_DATABASE, problems.front() + " Nothing was backed up.");
}

void copyRegistry(const fs::path& registryFile, const fs::path& copy)
{
    soci::session session;
    zn::openDatabase(
        session, zn::sqliteConnection(registryFile), {.longestWait = std::chrono::minutes(1), .syncCommits = false});
    copyWholeDatabase(session, copy);
}

void writeSums(const fs::path& folder)
{
    std::string lines;
    for (const char* file : {BackupCopy::database, BackupCopy::registry})
        lines += contentOf(folder / file).hash + "  " + file + "\n";
    const fs::path sums = folder / BackupCopy::sums;
    zn::makePrivateFile(sums, zn::sharingOf(folder));
    FileHandle(sums, O_WRONLY, E_ARK_ARCHIVE).writeAll(lines);
}

class Backup {
public:
    Backup(Store& store, BackupFolder& target, const BackupSetting& setting, const Progress& progress)
        : m_store(store)
        , m_target(target)
        , m_setting(setting)
        , m_progress(progress)
    {
    }

    BackupReport run(const fs::path& registryFile)
    {
        adoptIdentity();
        // A clean could set aside what the copy of the database still names.
        const ArchiveBatch noCleanMeanwhile(m_store.archive());
        const fs::path folder = m_target.beginCopy();
        copyWholeDatabase(m_store.database().session(), folder / BackupCopy::database);
        copyRegistry(registryFile, folder / BackupCopy::registry);
        writeSums(folder);
        bringContents(BackupCopy(folder).contents());
        m_report.copy = m_target.finishCopy(m_store.clock().now()).name();
        if (m_report.problems.empty())
            removeOld();
        return std::move(m_report);
    }

private:
    void adoptIdentity()
    {
        const std::string own = m_store.archive().identity(), known = m_target.archive().identity();
        if (known.empty() && m_target.copies().empty())
            m_target.archive().setIdentity(own);
        else if (known != own)
            throw zn::StatusError(zn::E_INVALIDARG,
                "The backup in " + m_target.folder().string() + " is another vault's. Choose another folder.");
    }

    void bringContents(const std::vector<Holder>& holders)
    {
        std::int64_t done = 0;
        for (const Holder& holder : holders) {
            m_report.bytes += holder.content.size;
            if (!held(holder))
                bring(holder);
            if (m_progress)
                m_progress(++done, static_cast<std::int64_t>(holders.size()));
        }
        publish();
        m_report.contents = static_cast<std::int64_t>(holders.size());
    }

    bool held(const Holder& holder)
    {
        return m_target.archive().holdsSized(holder.content)
            && (!m_setting.verify || !problemOf(m_target.archive(), holder));
    }

    void bring(const Holder& holder)
    {
        if (!m_batch)
            m_batch.emplace(m_target.archive());
        if (!put(holder)) {
            m_report.problems.push_back(
                problemOf(m_store.archive(), holder).value_or("\"" + holder.name + "\" was changed in the archive."));
            return;
        }
        ++m_report.newContents;
        m_report.newBytes += holder.content.size;
        m_bytesInBatch += holder.content.size;
        if (++m_contentsInBatch >= contentsAtOnce || m_bytesInBatch >= bytesAtOnce)
            publish();
    }

    /// False if the vault has lost the content; raises when the backup can't be written.
    bool put(const Holder& holder)
    {
        try {
            FileHandle source(m_store.archive().pathOf(holder.content.hash), O_RDONLY | O_NOFOLLOW, E_ARK_ARCHIVE);
            return m_batch->putAs(holder.content, source);
        } catch (const zn::StatusError&) {
            if (problemOf(m_store.archive(), holder))
                return false;
            throw;
        }
    }

    void publish()
    {
        if (m_batch)
            m_batch->publish();
        m_batch.reset();
        m_contentsInBatch = 0;
        m_bytesInBatch = 0;
    }

    void removeOld()
    {
        auto copies = m_target.copies();
        for (; std::ssize(copies) > m_setting.keep; copies.erase(copies.begin())) {
            m_target.retire(copies.front());
            ++m_report.removedCopies;
        }
        if (!m_target.mayHoldLeftovers())
            return;
        std::unordered_set<std::string> needed;
        for (const BackupCopy& copy : copies)
            for (const Holder& holder : copy.contents())
                needed.insert(holder.content.hash);
        const auto isNeeded = [&](const std::string& hash) { return needed.contains(hash); };
        if (const auto done = m_target.archive().removeLeftovers(isNeeded))
            m_report.removedContents = done->moved;
        m_target.removeRetired();
    }

    Store& m_store;
    BackupFolder& m_target;
    const BackupSetting& m_setting;
    const Progress& m_progress;
    BackupReport m_report;
    std::optional<ArchiveBatch> m_batch;
    int m_contentsInBatch = 0;
    std::int64_t m_bytesInBatch = 0;
};

} // namespace

BackupReport backUp(Store& store, const fs::path& registryFile, const fs::path& folder, const BackupSetting& setting,
    const Progress& progress)
{
    const fs::path own = fs::weakly_canonical(store.archive().folder().parent_path());
    const auto inside = fs::weakly_canonical(fs::absolute(folder)).lexically_relative(own);
    if (!inside.empty() && *inside.begin() != "..")
        throw zn::StatusError(zn::E_INVALIDARG,
            "The folder " + folder.string() + " lies in the vault's own folder " + own.string()
                + " and would be lost with it. Choose another folder, on another disk.");
    BackupFolder target(folder, BackupFolder::Use::Write);
    return Backup(store, target, setting, progress).run(registryFile);
}

BackupCheckReport checkBackup(const fs::path& folder, const Progress& progress)
{
    BackupFolder backup(folder, BackupFolder::Use::Read);
    BackupCheckReport report;
    std::map<std::string, Holder> holders;
    for (const BackupCopy& copy : backup.copies()) {
        ++report.copies;
        auto problems = copy.problems();
        try {
            // A damaged database could name anything.
            for (const Holder& holder : problems.empty() ? copy.contents() : std::vector<Holder>())
                holders.emplace(holder.content.hash, holder);
        } catch (const zn::StatusError& error) {
            problems.emplace_back(error.what());
        }
        report.problems.insert(report.problems.end(), problems.begin(), problems.end());
    }
    for (const auto& [hash, holder] : holders) {
        report.bytes += holder.content.size;
        if (const auto problem = problemOf(backup.archive(), holder))
            report.problems.push_back(*problem);
        if (progress)
            progress(++report.contents, static_cast<std::int64_t>(holders.size()));
    }
    report.contents = std::ssize(holders);
    return report;
}

} // namespace zn::arkin
