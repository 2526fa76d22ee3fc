#include "arkin/tasks/WorkerStore.h"

#include "arkin/tasks/RunPrune.h"
#include "arkin/tasks/TaskSchema.h"

#include <algorithm>
#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;
using zn::toText;
using zn::toUtf8;

namespace {

std::vector<WorkerInfo> rowsOf(Database& database, std::int32_t vaultId)
{
    std::vector<WorkerInfo> workers;
    WorkerInfo row;
    std::string user, machine;
    long long mark = 0, begun = 0, since = 0, heard = 0;
    std::int32_t stop = 0;
    soci::statement select
        = (database.session().prepare << "SELECT id, user_name, machine, process, process_mark, begun_at, waits_since, "
                                         "heard_at, stop_wanted FROM task_workers WHERE vault_id = :vault ORDER BY id",
            use(vaultId), into(row.id), into(user), into(machine), into(row.process.process), into(mark), into(begun),
            into(since), into(heard), into(stop));
    select.execute();
    while (select.fetch()) {
        row.userName = toText(user);
        row.process.host = toText(machine);
        row.process.start = mark;
        row.begunAt = begun;
        row.since = since;
        row.heardAt = heard;
        row.stopWanted = stop != 0;
        workers.push_back(row);
    }
    return workers;
}

void giveRun(std::vector<WorkerInfo>& workers, const RunInfo& run)
{
    auto worker = std::ranges::find(workers, run.owner, &WorkerInfo::process);
    if (worker == workers.end()) {
        workers.push_back({0, run.userName, run.owner, run.startedAt, 0, run.heartbeatAt, false, {}});
        worker = workers.end() - 1;
    }
    worker->since = run.startedAt;
    worker->heardAt = std::max(worker->heardAt, run.heartbeatAt);
    worker->run = run;
}

} // namespace

bool isGone(const WorkerInfo& worker, std::int64_t now)
{
    return !mayBeAlive(worker.process) || now - worker.heardAt > heartbeatLimit;
}

zn::Text workerStateText(const WorkerInfo& worker, std::int64_t now)
{
    if (isGone(worker, now))
        return u"gone";
    if (worker.stopWanted)
        return worker.run ? u"stops after its run" : u"stops";
    return worker.run ? u"at work" : u"waiting";
}

WorkerStore::WorkerStore(Database& database, std::int32_t vaultId)
    : m_database(database)
    , m_vaultId(vaultId)
{
    applySchema(database, taskSchema);
}

std::int32_t WorkerStore::enter(zn::TextView userName, const ProcessMark& process, std::int64_t now)
{
    Transaction transaction(m_database);
    forgetGone(now);
    const auto id = m_database.allocateIds("task_workers");
    const auto user = toUtf8(userName), machine = toUtf8(process.host);
    const long long mark = process.start, at = now;
    m_database.session() << "INSERT INTO task_workers (id, vault_id, user_name, machine, process, process_mark, "
                            "begun_at, waits_since, heard_at, stop_wanted) "
                            "VALUES (:id, :vault, :user, :machine, :process, :mark, :at, :since, :heard, 0)",
        use(id), use(m_vaultId), use(user), use(machine), use(process.process), use(mark), use(at), use(at), use(at);
    transaction.commit();
    return id;
}

void WorkerStore::forgetGone(std::int64_t now)
{
    for (const WorkerInfo& worker : rowsOf(m_database, m_vaultId))
        if (!mayBeAlive(worker.process) || now - worker.heardAt > secondsOfDay)
            m_database.session() << "DELETE FROM task_workers WHERE id = :id", use(worker.id);
}

void WorkerStore::leave(std::int32_t id)
{
    Transaction transaction(m_database);
    m_database.session() << "DELETE FROM task_workers WHERE id = :id", use(id);
    transaction.commit();
}

bool WorkerStore::beat(std::int32_t id, std::int64_t since, std::int64_t now)
{
    const long long from = since, at = now;
    soci::statement update = (m_database.session().prepare
            << "UPDATE task_workers SET waits_since = :since, heard_at = :at WHERE id = :id",
        use(from), use(at), use(id));
    update.execute(true);
    return update.get_affected_rows() > 0;
}

bool WorkerStore::isStopWanted(std::int32_t id)
{
    std::int32_t wanted = 0;
    m_database.session() << "SELECT COUNT(*) FROM task_workers WHERE id = :id AND stop_wanted = 1", use(id),
        into(wanted);
    return wanted > 0;
}

void WorkerStore::wantStop(std::int32_t id)
{
    Transaction transaction(m_database);
    m_database.session() << "UPDATE task_workers SET stop_wanted = 1 WHERE id = :id", use(id);
    transaction.commit();
}

std::vector<WorkerInfo> WorkerStore::list()
{
    const ReadScope scope(m_database);
    auto workers = rowsOf(m_database, m_vaultId);
    for (const RunInfo& run : RunStore(m_database, m_vaultId).listTaken())
        giveRun(workers, run);
    return workers;
}

WorkerInfo WorkerStore::get(std::int32_t id)
{
    for (WorkerInfo& worker : list())
        if (worker.id == id && id != 0)
            return worker;
    throw zn::StatusError(
        zn::E_INVALIDARG, "There is no worker " + std::to_string(id) + "; 'arkin workers' shows them.");
}

} // namespace zn::arkin
