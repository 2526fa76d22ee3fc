#include "arkin/tasks/UnchangedFiles.h"

#include "arkin/store/ReferenceClosure.h"
#include "arkin/tasks/RunAudit.h"

#include <algorithm>
#include <map>
#include <set>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

using soci::into;
using soci::use;

/// The run that has made a file's outputs.
struct Earlier {
    std::int32_t runId = 0;
    std::size_t outputs = 0;
};

/// What has to be the same in both runs.
struct Circumstances {
    std::string settingsHash;
    std::string templateHash;
    zn::ArkApplication application;
    std::int64_t begunAt = 0;

    bool isKnown() const { return !settingsHash.empty() && !application.name.empty(); }
    bool isLike(const Circumstances& other) const
    {
        return settingsHash == other.settingsHash && templateHash == other.templateHash
            && application.name == other.application.name && application.version == other.application.version
            && application.build == other.application.build;
    }
};

class Comparison {
public:
    Comparison(Vault& vault, zn::FileSystem& files, const RunInfo& run)
        : m_vault(vault)
        , m_files(files)
        , m_run(run)
        , m_session(vault.database().session())
        , m_now(of(run.id))
    {
    }

    std::vector<zn::Text> sentences(std::span<const zn::ArkSourceFile> files)
    {
        std::vector<std::optional<Earlier>> earlier(files.size());
        std::vector<ClosureStart> starts;
        for (std::size_t i = 0; i < files.size(); ++i) {
            earlier[i] = m_now.isKnown() ? doneBefore(files[i]) : std::nullopt;
            if (earlier[i])
                starts.push_back({files[i].fileId, files[i].folderId, files[i].version});
        }
        readReferences(starts);
        std::vector<zn::Text> sentences(files.size());
        for (std::size_t i = 0; i < files.size(); ++i)
            if (earlier[i] && newestBelow(files[i]) < of(earlier[i]->runId).begunAt)
                sentences[i] = zn::toText("Nothing has changed since run " + std::to_string(earlier[i]->runId)
                    + ", and its "
                    + (earlier[i]->outputs == 1 ? "output is" : std::to_string(earlier[i]->outputs) + " outputs are")
                    + " as it left them.");
        return sentences;
    }

private:
    const Circumstances& of(std::int32_t runId)
    {
        const auto [known, isNew] = m_known.try_emplace(runId);
        if (!isNew)
            return known->second;
        try {
            const RunAudit audit = RunAudits(m_vault.database()).get(runId);
            if (!audit.works.empty())
                known->second = {
                    audit.settingsHash, audit.templateHash, audit.works.back().application, audit.works.back().begunAt};
        } catch (const zn::StatusError&) {
            known->second = {}; // of a run of which nothing was kept nothing is known
        }
        return known->second;
    }

    std::optional<Earlier> doneBefore(const zn::ArkSourceFile& file)
    {
        Earlier earlier;
        const auto unchanged = static_cast<std::int32_t>(zn::FileOutcome::Unchanged);
        const std::string task = zn::toUtf8(m_run.taskName);
        const std::int32_t vaultId = m_vault.info().id;
        m_session << "SELECT COALESCE(MAX(r.run_id), 0) FROM task_run_results r JOIN task_runs t ON t.id = r.run_id "
                     "WHERE r.source_id = :f AND (r.outcome <> :u OR r.output_version <> 0) AND t.task_name = :n AND "
                     "t.vault_id = :v "
                     "AND r.run_id <> :i",
            use(file.fileId), use(unchanged), use(task), use(vaultId), use(m_run.id), into(earlier.runId);
        if (earlier.runId == 0 || !of(earlier.runId).isLike(m_now) || !wasAsked(earlier.runId, file))
            return {};
        earlier.outputs = goodOutputs(earlier.runId, file);
        return earlier.outputs == 0 ? std::nullopt : std::optional(earlier);
    }

    bool wasAsked(std::int32_t runId, const zn::ArkSourceFile& file)
    {
        int count = 0;
        const std::string configuration = zn::toUtf8(file.configuration);
        m_session << "SELECT COUNT(*) FROM task_run_macros WHERE run_id = :r AND file_id = :f AND version = :v "
                     "AND configuration = :c",
            use(runId), use(file.fileId), use(file.version), use(configuration), into(count);
        return count != 0;
    }

    /// How many there are; 0 if one isn't as it was made.
    std::size_t goodOutputs(std::int32_t runId, const zn::ArkSourceFile& file)
    {
        struct Output {
            std::int32_t sourceVersion = 0, outcome = 0, id = 0, version = 0;
            std::string path;
        };
        Output row;
        std::vector<Output> outputs;
        soci::statement select = (m_session.prepare
                << "SELECT source_version, outcome, output_id, output_version, output_path FROM task_run_results "
                   "WHERE run_id = :r AND source_id = :f",
            use(runId), use(file.fileId), into(row.sourceVersion), into(row.outcome), into(row.id), into(row.version),
            into(row.path));
        select.execute();
        while (select.fetch())
            outputs.push_back(row);
        const bool areGood = std::all_of(outputs.begin(), outputs.end(), [&](const Output& output) {
            const auto outcome = static_cast<zn::FileOutcome>(output.outcome);
            const bool isMade = outcome <= zn::FileOutcome::Unchanged; // as the run found it, if it wanted no version
            return isMade && output.sourceVersion == file.version && isThere(output.id, output.version, output.path);
        });
        return areGood ? outputs.size() : 0;
    }

    bool isThere(std::int32_t fileId, std::int32_t version, const std::string& path)
    {
        if (fileId != 0) {
            const auto row = m_vault.files().row(fileId);
            return row && !row->deleted && version != 0 && row->latestVersion == version;
        }
        std::error_code error;
        try {
            return std::filesystem::is_regular_file(m_files.toMachine(zn::toText(path)), error);
        } catch (const zn::StatusError&) {
            return false; // a printer
        }
    }

    void readReferences(const std::vector<ClosureStart>& starts)
    {
        if (starts.empty())
            return;
        m_closure = readReferenceClosure(m_vault, starts, false);
        std::vector<FileVersion> targets;
        for (const auto& [from, list] : m_closure.references)
            for (const auto& target : list)
                targets.push_back({target.place.fileId, target.version});
        const auto rows = m_vault.files().versions(targets);
        for (std::size_t i = 0; i < targets.size(); ++i)
            m_madeAt[ReferenceClosure::key(targets[i].fileId, targets[i].version)]
                = rows[i] ? rows[i]->madeAt : INT64_MAX;
    }

    /// When the newest of what the file refers to was made; 0 without any.
    std::int64_t newestBelow(const zn::ArkSourceFile& file) const
    {
        std::int64_t newest = 0;
        std::set<std::int64_t> seen;
        std::vector<std::int64_t> open{ReferenceClosure::key(file.fileId, file.version)};
        while (!open.empty()) {
            const std::int64_t from = open.back();
            open.pop_back();
            const auto list = m_closure.references.find(from);
            if (!seen.insert(from).second || list == m_closure.references.end())
                continue;
            for (const auto& target : list->second) {
                const std::int64_t to = ReferenceClosure::key(target.place.fileId, target.version);
                newest = std::max(newest, m_madeAt.at(to));
                open.push_back(to);
            }
        }
        return newest;
    }

    Vault& m_vault;
    zn::FileSystem& m_files;
    const RunInfo& m_run;
    soci::session& m_session;
    std::map<std::int32_t, Circumstances> m_known;
    Circumstances m_now;
    ReferenceClosure m_closure;
    std::map<std::int64_t, std::int64_t> m_madeAt; ///< of versions, by their keys
};

} // namespace

std::vector<zn::Text> UnchangedFiles::sentences(const RunInfo& run, std::span<const zn::ArkSourceFile> files) const
{
    const ReadScope scope(m_vault->database());
    return Comparison(*m_vault, *m_files, run).sentences(files);
}

} // namespace zn::arkin
