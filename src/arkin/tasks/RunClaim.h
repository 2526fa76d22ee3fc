#pragma once

#include "arkin/tasks/RunStore.h"
#include "contracts/host/ArkTask.h"

#include <optional>
#include <span>

namespace zn::arkin {

/// A worker's hold on one run. Each taking counts the run's claim up, and every write names the claim that it was made
/// under: a worker that comes back late, after a successor took the run, changes nothing and gets
/// `E_ARK_RUN_TAKEN_OVER`. Taking is one short transaction; the work goes on outside it.
class RunClaim {
public:
    /// Takes the oldest waiting run; none if nothing waits. Runs whose worker's process is gone go back to the queue
    /// first; one that has cost so many workers ends with errors instead, since it would cost the next one, too.
    static std::optional<RunClaim> takeNext(RunStore& store, const ProcessMark& owner, std::int64_t now);
    /// Takes this run, if it waits or if its worker died. Raises `StatusError` E_INVALIDARG with a sentence that says
    /// what else is the matter with it.
    static RunClaim take(RunStore& store, std::int32_t runId, const ProcessMark& owner, std::int64_t now);

    /// The run as it was when it was taken.
    const RunInfo& run() const { return m_run; }
    RunStore& store() const { return *m_store; }

    /// Whether somebody wants the run cancelled; over `database`, which may be another thread's connection. False if
    /// the run was taken over.
    bool cancelRequested(Database& database) const;
    /// Tells that the worker lives; the same holds.
    bool beat(Database& database, std::int64_t now) const;

    // The writes. Each raises `StatusError` E_ARK_RUN_TAKEN_OVER when the run has gone to another worker.
    void requireHeld() const;
    zn::TaskRunState state() const;
    /// Changes the state if it is one of `from`; returns the state that stands afterwards.
    zn::TaskRunState changeState(std::span<const zn::TaskRunState> from, zn::TaskRunState to) const;
    void writeProgress(std::int32_t total, std::int32_t position, zn::TextView text) const;
    void writeVariable(zn::TextView name, const zn::Value& value) const;
    void addMessage(zn::TextView path, zn::TextView sentence) const;
    void writeOutputs(std::int32_t expected, std::int32_t missing) const;
    /// Replaces what was written before.
    void writeResults(const std::vector<zn::ArkFileResult>& results, const VersionsByFile& identical = {}) const;
    // RunAudit.cpp has these.
    void writeAddIn(const zn::ArkAddInInfo& addIn) const;
    void writeApplication(const zn::ArkApplication& application) const;
    /// Adds them to those that stand there.
    void writeMacros(const std::vector<zn::ArkRunMacro>& macros) const;
    /// How many workers a run may cost.
    static constexpr std::int32_t mostLosses = 3;
    /// Ends the run: state, code, text and documents together.
    void finish(zn::TaskRunState state, zn::Status code, zn::TextView text,
        const std::vector<zn::ArkTaskResultDoc>& documents, std::int64_t now) const;

private:
    RunClaim(RunStore& store, RunInfo run)
        : m_store(&store)
        , m_run(std::move(run))
    {
    }
    static void takeBackLostRuns(RunStore& store, std::int64_t now);
    static RunClaim mark(RunStore& store, std::int32_t runId, const ProcessMark& owner, std::int64_t now);

    RunStore* m_store;
    RunInfo m_run;
};

} // namespace zn::arkin
