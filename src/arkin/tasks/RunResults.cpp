#include "arkin/store/Database.h"
#include "arkin/tasks/RunClaim.h"

#include <cmath>
#include <soci/soci.h>

// What became of each output of a run: written by its worker, read by whoever asks what the night was like.

namespace zn::arkin {

using soci::into;
using soci::use;

namespace {

zn::ArkFileResult unchanged(zn::ArkFileResult result, std::int32_t version)
{
    result.outcome = zn::FileOutcome::Unchanged;
    if (result.sentence.empty())
        result.sentence = u"It is the same as version " + zn::numberText(version) + u", so no version was made.";
    return result;
}

} // namespace

void RunClaim::writeResults(const std::vector<zn::ArkFileResult>& results, const VersionsByFile& identical) const
{
    Transaction transaction(m_store->database());
    requireHeld();
    auto& session = m_store->database().session();
    const std::int32_t run = m_run.id;
    session << "DELETE FROM task_run_results WHERE run_id = :id", use(run);
    std::string source, part, output, sentence;
    std::int32_t position = 0, outcome = 0, kept = 0;
    long long milliseconds = 0;
    zn::ArkFileResult row;
    soci::statement insert = (session.prepare
            << "INSERT INTO task_run_results (run_id, position, source_path, source_id, source_version, part, "
               "output_path, output_id, output_version, outcome, sentence, milliseconds) VALUES (:run, :position, "
               ":source, :source_id, :source_version, :part, :output, :output_id, COALESCE((SELECT MAX(version) FROM "
               "versions WHERE file_id = :same_id AND run_id = :same_run), :kept), :outcome, :sentence, :milliseconds)",
        use(run), use(position), use(source), use(row.sourceId), use(row.sourceVersion), use(part), use(output),
        use(row.outputId), use(row.outputId), use(run), use(kept), use(outcome), use(sentence), use(milliseconds));
    for (const auto& result : results) {
        row = result;
        const auto found = identical.find(row.outputId);
        kept = found == identical.end() ? 0 : found->second;
        if (kept != 0 && row.outcome <= zn::FileOutcome::Replaced)
            row = unchanged(std::move(row), kept);
        source = toUtf8(row.source);
        part = toUtf8(row.part);
        output = toUtf8(row.output);
        sentence = toUtf8(row.sentence);
        outcome = static_cast<std::int32_t>(row.outcome);
        milliseconds = std::llround(row.seconds * 1000);
        insert.execute(true);
        ++position;
    }
    transaction.commit();
}

std::vector<RunFileResult> RunStore::results(std::int32_t runId)
{
    std::vector<RunFileResult> results;
    RunFileResult row;
    std::string source, part, output, sentence;
    std::int32_t outcome = 0;
    long long milliseconds = 0;
    soci::statement select = (m_database.session().prepare
            << "SELECT source_path, source_id, source_version, part, output_path, output_id, output_version, outcome, "
               "sentence, milliseconds FROM task_run_results WHERE run_id = :id ORDER BY position",
        use(runId), into(source), into(row.sourceId), into(row.sourceVersion), into(part), into(output),
        into(row.outputId), into(row.outputVersion), into(outcome), into(sentence), into(milliseconds));
    select.execute();
    while (select.fetch()) {
        row.source = toText(source);
        row.part = toText(part);
        row.output = toText(output);
        row.sentence = toText(sentence);
        row.outcome = static_cast<zn::FileOutcome>(outcome);
        row.seconds = static_cast<double>(milliseconds) / 1000;
        results.push_back(row);
    }
    return results;
}

zn::Text outcomeText(zn::FileOutcome outcome)
{
    switch (outcome) {
    case zn::FileOutcome::Made:
        return u"made";
    case zn::FileOutcome::Replaced:
        return u"replaced";
    case zn::FileOutcome::Unchanged:
        return u"unchanged";
    case zn::FileOutcome::Skipped:
        return u"skipped";
    case zn::FileOutcome::Failed:
        return u"failed";
    }
    return u"outcome " + zn::numberText(static_cast<std::int32_t>(outcome));
}

VersionsByFile RunStore::versionsWithOutputs(zn::TextView taskName)
{
    const std::string name = zn::toUtf8(taskName);
    const auto unchanged = static_cast<std::int32_t>(zn::FileOutcome::Unchanged); // the last of the good ones
    std::int32_t file = 0, version = 0;
    soci::statement select = (m_database.session().prepare
            << "SELECT x.source_id, MAX(x.source_version) FROM task_run_results x JOIN task_runs r ON r.id = x.run_id "
               "WHERE r.vault_id = :vault AND r.task_name = :task AND x.outcome <= :good GROUP BY x.source_id",
        use(m_vaultId), use(name), use(unchanged), into(file), into(version));
    select.execute();
    VersionsByFile versions;
    while (select.fetch())
        versions[file] = version;
    return versions;
}

std::vector<RunOfFile> RunStore::runsOf(std::int32_t fileId)
{
    std::vector<RunOfFile> runs;
    RunOfFile run;
    std::string name;
    std::int32_t outcome = 0, isOutput = 0;
    long long launchedAt = 0;
    soci::statement select = (m_database.session().prepare
            << "SELECT DISTINCT r.id, r.task_name, r.launched_at, x.output_id = :made, x.outcome FROM task_run_results "
               "x "
               "JOIN task_runs r ON r.id = x.run_id WHERE r.vault_id = :vault AND (x.source_id = :read OR "
               "x.output_id = :output) ORDER BY r.id DESC, 4 DESC, 5",
        use(fileId), use(m_vaultId), use(fileId), use(fileId), into(run.runId), into(name), into(launchedAt),
        into(isOutput), into(outcome));
    select.execute();
    while (select.fetch()) {
        run.taskName = zn::toText(name);
        run.launchedAt = launchedAt;
        run.isOutput = isOutput != 0;
        run.outcome = static_cast<zn::FileOutcome>(outcome);
        runs.push_back(run);
    }
    return runs;
}

} // namespace zn::arkin
