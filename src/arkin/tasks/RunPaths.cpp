#include "arkin/tasks/RunPaths.h"

#include "arkin/store/Codes.h"
#include "arkin/tasks/RunRow.h"
#include "base/Paths.h"

#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;

namespace {

constexpr std::chrono::milliseconds lookInterval{500};

std::string folded(zn::TextView path) { return zn::toUtf8(zn::foldCase(path)); }

soci::session& sessionOf(const RunClaim& claim) { return claim.store().database().session(); }

} // namespace

RunPaths::RunPaths(const RunClaim& claim, zn::Clock& clock, zn::FileSystem& files, RoomWait& room, WaitWatcher watcher)
    : m_claim(claim)
    , m_clock(clock)
    , m_files(files)
    , m_room(room)
    , m_watcher(std::move(watcher))
{
}

void RunPaths::announce(const std::vector<zn::ArkOutputNames>& names)
{
    for (const auto& each : names)
        m_announced.push_back({folded(each.beginning), folded(each.ending), 0});
}

bool RunPaths::keepLocalCopies(std::span<const LocalCopyUse> copies)
{
    auto wanted = m_announced;
    for (const LocalCopyUse& copy : copies)
        wanted.push_back({folded(copy.path), {}, copy.version});
    if (!keep(wanted))
        return false;
    m_kept = PathIndex(m_announced);
    return true;
}

void RunPaths::keepOutput(zn::TextView path)
{
    m_claim.requireHeld();
    const KeptPath output{folded(path), folded(zn::pathExtension(path)), 0};
    if (m_kept.find({output.beginning, {}, 1})) // as the place of a copy: only what covers the whole of it meets that
        return;
    while (!keep({output}))
        continue;
}

/// False after another run has been in the way, whose end was awaited.
bool RunPaths::keep(const std::vector<KeptPath>& wanted)
{
    bool kept = false;
    m_room.patiently([&] { kept = tryToKeep(wanted); });
    return kept;
}

bool RunPaths::tryToKeep(const std::vector<KeptPath>& wanted)
{
    Transaction transaction(m_claim.store().database());
    m_claim.requireHeld();
    for (const RunInfo& other : othersAtWork()) {
        const PathIndex theirs(keptBy(other.id));
        for (const KeptPath& path : wanted) {
            const KeptPath* met = theirs.find(path);
            if (!met)
                continue;
            if (waitsForThis(other.id))
                throw zn::StatusError(E_ARK_RUNS_CROSS,
                    "Run " + std::to_string(other.id) + " works with " + shown(met->beginning)
                        + " and waits for a file of this run. Launch the task again when that run has ended.");
            setWaitsFor(other.id);
            const KeptPath place = *met;
            transaction.commit();
            awaitEnd(other, place);
            return false;
        }
    }
    write(wanted);
    setWaitsFor(0);
    transaction.commit();
    return true;
}

/// What runs have left behind that are at work no more goes with this.
std::vector<RunInfo> RunPaths::othersAtWork()
{
    std::vector<RunInfo> others, gone;
    const auto own = id();
    const soci::rowset<RunInfo> rows = (sessionOf(m_claim).prepare
            << selectRuns << "id IN (SELECT DISTINCT run_id FROM task_run_paths) AND id <> :own ORDER BY id",
        use(own));
    for (const RunInfo& run : rows)
        (run.taken() && !workerDied(run, m_clock.now()) ? others : gone).push_back(run);
    for (const RunInfo& run : gone)
        sessionOf(m_claim) << "DELETE FROM task_run_paths WHERE run_id = :r", use(run.id);
    return others;
}

std::vector<KeptPath> RunPaths::keptBy(std::int32_t runId)
{
    std::vector<KeptPath> paths;
    KeptPath path;
    soci::statement select
        = (sessionOf(m_claim).prepare << "SELECT beginning, ending, version FROM task_run_paths WHERE run_id = :r",
            use(runId), into(path.beginning), into(path.ending), into(path.version));
    select.execute();
    while (select.fetch())
        paths.push_back(path);
    return paths;
}

void RunPaths::write(const std::vector<KeptPath>& paths)
{
    KeptPath path;
    const auto own = id();
    soci::statement insert = (sessionOf(m_claim).prepare
            << "INSERT INTO task_run_paths (run_id, position, beginning, ending, version) VALUES (:r, :p, :b, :e, :v)",
        use(own), use(m_rows), use(path.beginning), use(path.ending), use(path.version));
    for (const KeptPath& each : paths) {
        path = each;
        insert.execute(true);
        ++m_rows;
    }
}

void RunPaths::setWaitsFor(std::int32_t runId)
{
    sessionOf(m_claim) << "UPDATE task_runs SET waits_for = :w WHERE id = :id", use(runId), use(m_claim.run().id);
}

/// Also through others that wait in between.
bool RunPaths::waitsForThis(std::int32_t runId)
{
    std::set<std::int32_t> seen;
    while (runId != 0 && seen.insert(runId).second) {
        std::int32_t next = 0;
        sessionOf(m_claim) << "SELECT waits_for FROM task_runs WHERE id = :id", use(runId), into(next);
        if (next == id())
            return true;
        runId = next;
    }
    return false;
}

void RunPaths::awaitEnd(const RunInfo& other, const KeptPath& path)
{
    m_watcher("Waits for run " + std::to_string(other.id) + " of '" + zn::toUtf8(other.taskName)
        + "', which works with " + shown(path.beginning) + (path.isOutput() ? "…" : ""));
    const auto goOn = [&] {
        Transaction transaction(m_claim.store().database());
        setWaitsFor(0);
        transaction.commit();
        m_watcher({});
    };
    for (;;) {
        m_clock.sleep(lookInterval);
        if (m_claim.state() == zn::TaskRunState::CancelRequested) {
            goOn();
            throw zn::StatusError(
                zn::E_ABORT, "The run was cancelled while it waited for run " + std::to_string(other.id) + ".");
        }
        RunInfo now;
        sessionOf(m_claim) << selectRuns << "id = :id", use(other.id), into(now);
        if (!sessionOf(m_claim).got_data() || !now.taken() || now.claim != other.claim
            || workerDied(now, m_clock.now()))
            return goOn();
    }
}

} // namespace zn::arkin
