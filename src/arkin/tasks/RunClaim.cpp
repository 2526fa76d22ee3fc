#include "arkin/tasks/RunClaim.h"

#include "arkin/store/Codes.h"
#include "arkin/tasks/RunEnd.h"
#include "arkin/tasks/RunRow.h"

#include <algorithm>
#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;
using zn::TaskRunState;
using zn::toUtf8;

namespace {

std::string ownerText(const RunInfo& run)
{
    return "process " + std::to_string(run.owner.process) + " on " + toUtf8(run.owner.host);
}

/// Why a run can't be taken.
std::string refusal(const RunInfo& run, std::int64_t now)
{
    const auto name = "Run " + std::to_string(run.id);
    if (run.ended())
        return name + " has ended already (" + toUtf8(stateText(run, now)) + "); launch the task anew.";
    if (run.state == TaskRunState::Suspended && !run.taken())
        return name + " is suspended; 'arkin task resume " + std::to_string(run.id) + "' puts it back to the queue.";
    return name + " is being worked on by " + ownerText(run) + ".";
}

std::int32_t number(TaskRunState state) { return static_cast<std::int32_t>(state); }

} // namespace

std::optional<RunClaim> RunClaim::takeNext(RunStore& store, const ProcessMark& owner, std::int64_t now)
{
    const auto vault = store.vaultId();
    const auto queued = number(TaskRunState::Queued);
    auto& session = store.database().session();
    std::int32_t id = 0;
    soci::indicator found = soci::i_null;
    const auto look = [&] {
        session << "SELECT MIN(id) FROM task_runs WHERE vault_id = :vault AND state = :state", use(vault), use(queued),
            into(id, found);
        return found == soci::i_ok;
    };
    // An idle worker looks without taking the writers' turn.
    takeBackLostRuns(store, now);
    if (!look())
        return {};
    Transaction transaction(store.database());
    if (!look())
        return {};
    auto claim = mark(store, id, owner, now);
    transaction.commit();
    return claim;
}

namespace {

/// What a person has asked for holds, whoever was about to see to it.
void takeBack(RunStore& store, const RunInfo& run, std::int64_t now)
{
    auto& session = store.database().session();
    std::int32_t losses = 0;
    session << "SELECT losses FROM task_runs WHERE id = :id", use(run.id), into(losses);
    ++losses;
    if (run.state == TaskRunState::CancelRequested)
        endUnheld(store, run, TaskRunState::Cancelled,
            "The run was cancelled, and its worker went away before it had ended it. What it had checked out was given "
            "back.",
            now);
    else if (losses >= RunClaim::mostLosses)
        endUnheld(store, run, TaskRunState::FinishedWithErrors,
            "The run was given up: " + std::to_string(losses)
                + " workers went away while they were at work on it. Launch the task on fewer files to find the one "
                  "that ends them.",
            now);
    else if (run.state == TaskRunState::Suspended || run.state == TaskRunState::SuspendRequested)
        giveBackToWaiting(store, run, TaskRunState::Suspended);
    else
        giveBackToWaiting(store, run, TaskRunState::Queued);
    session << "UPDATE task_runs SET losses = :l WHERE id = :id", use(losses), use(run.id);
}

} // namespace

void RunClaim::takeBackLostRuns(RunStore& store, std::int64_t now)
{
    for (const RunInfo& seen : workersGone(store)) {
        Transaction transaction(store.database());
        const auto run = store.get(seen.id);
        if (run.claim != seen.claim || !run.taken())
            continue;
        takeBack(store, run, now);
        transaction.commit();
    }
}

RunClaim RunClaim::take(RunStore& store, std::int32_t runId, const ProcessMark& owner, std::int64_t now)
{
    Transaction transaction(store.database());
    const auto run = store.get(runId);
    if (run.state != TaskRunState::Queued && !workerDied(run, now))
        throw zn::StatusError(zn::E_INVALIDARG, refusal(run, now));
    auto claim = mark(store, runId, owner, now);
    transaction.commit();
    return claim;
}

RunClaim RunClaim::mark(RunStore& store, std::int32_t runId, const ProcessMark& owner, std::int64_t now)
{
    auto& session = store.database().session();
    const auto running = number(TaskRunState::Running);
    const auto host = toUtf8(owner.host);
    const long long start = owner.start, at = now;
    session << "UPDATE task_runs SET state = :state, claim = claim + 1, owner_host = :host, owner_process = :process, "
               "owner_mark = :mark, heartbeat_at = :at, started_at = :started, progress_total = 0, "
               "progress_position = 0, progress_text = '', result_code = 0, result_text = '', outputs_expected = 0, "
               "outputs_missing = 0, waits_for = 0 WHERE id = :id",
        use(running), use(host), use(owner.process), use(start), use(at), use(at), use(runId);
    session << "DELETE FROM task_run_documents WHERE run_id = :id", use(runId);
    session << "DELETE FROM task_run_messages WHERE run_id = :id", use(runId);
    session << "DELETE FROM task_run_paths WHERE run_id = :id", use(runId);
    session << "DELETE FROM task_run_results WHERE run_id = :id", use(runId);
    giveBackOfRuns(store.database(), runId);
    const auto taken = store.get(runId);
    session << "INSERT INTO task_run_works (run_id, claim, machine, process, begun_at, add_in, add_in_version, "
               "application_name, application_version, application_build, macros) "
               "VALUES (:id, :claim, :machine, :process, :at, '', 0, '', '', '', 0)",
        use(runId), use(taken.claim), use(host), use(owner.process), use(at);
    return {store, taken};
}

bool RunClaim::cancelRequested(Database& database) const
{
    const auto requested = number(TaskRunState::CancelRequested);
    std::int32_t found = 0;
    database.session() << "SELECT COUNT(*) FROM task_runs WHERE id = :id AND claim = :claim AND state = :state",
        use(m_run.id), use(m_run.claim), use(requested), into(found);
    return found > 0;
}

bool RunClaim::beat(Database& database, std::int64_t now) const
{
    const long long at = now;
    soci::statement update
        = (database.session().prepare << "UPDATE task_runs SET heartbeat_at = :at WHERE id = :id AND claim = :claim",
            use(at), use(m_run.id), use(m_run.claim));
    update.execute(true);
    return update.get_affected_rows() > 0;
}

void RunClaim::requireHeld() const
{
    std::int32_t claim = 0;
    m_store->database().session() << "SELECT claim FROM task_runs WHERE id = :id", use(m_run.id), into(claim);
    if (claim != m_run.claim)
        throw zn::StatusError(E_ARK_RUN_TAKEN_OVER,
            "Run " + std::to_string(m_run.id)
                + " was taken over by another worker; nothing of this worker's report was kept.");
}

TaskRunState RunClaim::state() const
{
    requireHeld();
    std::int32_t state = 0;
    m_store->database().session() << "SELECT state FROM task_runs WHERE id = :id", use(m_run.id), into(state);
    return static_cast<TaskRunState>(state);
}

TaskRunState RunClaim::changeState(std::span<const TaskRunState> from, TaskRunState to) const
{
    Transaction transaction(m_store->database());
    const auto current = state();
    if (std::find(from.begin(), from.end(), current) == from.end())
        return current;
    const auto wanted = number(to);
    m_store->database().session() << "UPDATE task_runs SET state = :state WHERE id = :id", use(wanted), use(m_run.id);
    transaction.commit();
    return to;
}

void RunClaim::writeProgress(std::int32_t total, std::int32_t position, zn::TextView text) const
{
    Transaction transaction(m_store->database());
    requireHeld();
    const auto utf8 = toUtf8(text);
    m_store->database().session() << "UPDATE task_runs SET progress_total = :total, progress_position = :position, "
                                     "progress_text = :text WHERE id = :id",
        use(total), use(position), use(utf8), use(m_run.id);
    transaction.commit();
}

void RunClaim::writeVariable(zn::TextView name, const zn::Value& value) const
{
    const auto key = toUtf8(name);
    const auto stored = toStoredVariable(value);
    Transaction transaction(m_store->database());
    requireHeld();
    auto& session = m_store->database().session();
    session << "DELETE FROM task_run_variables WHERE run_id = :id AND name = :name", use(m_run.id), use(key);
    session << "INSERT INTO task_run_variables (run_id, name, value_type, value_text, own) "
               "VALUES (:id, :name, :type, :text, 1)",
        use(m_run.id), use(key), use(stored.type), use(stored.text);
    transaction.commit();
}

void RunClaim::addMessage(zn::TextView path, zn::TextView sentence) const
{
    const auto file = toUtf8(path), text = toUtf8(sentence);
    Transaction transaction(m_store->database());
    requireHeld();
    m_store->database().session() << "INSERT INTO task_run_messages (run_id, position, path, sentence) SELECT :id, "
                                     "COUNT(*), :path, :text FROM task_run_messages WHERE run_id = :same",
        use(m_run.id), use(file), use(text), use(m_run.id);
    transaction.commit();
}

void RunClaim::writeOutputs(std::int32_t expected, std::int32_t missing) const
{
    Transaction transaction(m_store->database());
    requireHeld();
    m_store->database().session()
        << "UPDATE task_runs SET outputs_expected = :expected, outputs_missing = :missing WHERE id = :id",
        use(expected), use(missing), use(m_run.id);
    transaction.commit();
}

void RunClaim::finish(TaskRunState state, zn::Status code, zn::TextView text,
    const std::vector<zn::ArkTaskResultDoc>& documents, std::int64_t now) const
{
    Transaction transaction(m_store->database());
    requireHeld();
    auto& session = m_store->database().session();
    const auto wanted = number(state);
    const auto utf8 = toUtf8(text);
    const long long at = now;
    session << "UPDATE task_runs SET state = :state, result_code = :code, result_text = :text, ended_at = :at "
               "WHERE id = :id",
        use(wanted), use(code), use(utf8), use(at), use(m_run.id);
    session << "DELETE FROM task_run_documents WHERE run_id = :id", use(m_run.id);
    session << "DELETE FROM task_run_paths WHERE run_id = :id", use(m_run.id);
    std::int32_t position = 0;
    for (const auto& document : documents) {
        session << "INSERT INTO task_run_documents (run_id, position, file_id, kind, folder_id, version) "
                   "VALUES (:run, :position, :file, :kind, :folder, :version)",
            use(m_run.id), use(position), use(document.fileId), use(document.kind), use(document.folderId),
            use(document.version);
        ++position;
    }
    transaction.commit();
}

} // namespace zn::arkin
