#pragma once

#include "arkin/tasks/ProcessMark.h"
#include "arkin/tasks/TaskStore.h"
#include "contracts/host/Records.h"

#include <functional>
#include <unordered_map>

namespace zn::arkin {

/// Versions of files, by the files' numbers.
using VersionsByFile = std::unordered_map<std::int32_t, std::int32_t>;

/// One run of a task as the database has it. Times are Unix seconds, 0 for not yet.
struct RunInfo {
    std::int32_t id = 0;
    zn::Text guid;     ///< "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}"
    zn::Text taskName; ///< as it was at the launch
    zn::Text addIn;
    zn::Text userName;
    zn::TaskRunState state = zn::TaskRunState::Queued;
    std::int32_t claim = 0; ///< how many workers have taken it
    ProcessMark owner;      ///< process 0 while no worker has taken it
    std::int64_t heartbeatAt = 0;
    std::int32_t progressTotal = 0;
    std::int32_t progressPosition = 0;
    zn::Text progressText;
    zn::Status resultCode = 0;
    zn::Text resultText;
    std::int64_t launchedAt = 0;
    zn::Text launchNote; ///< what a launch by itself had to leave out
    std::int64_t startedAt = 0;
    std::int64_t endedAt = 0;
    std::int32_t outputsExpected = 0; ///< as its add-in counts them; 0 if it doesn't
    std::int32_t outputsMissing = 0;  ///< of these, what isn't where it belongs
    bool onlyChanged = false;         ///< files are left out that an earlier run has done already
    bool keepsIdentical = false;      ///< an output that is as its latest version has it makes no new one
    std::int32_t fileLimit = 0;       ///< longest time for one file in seconds, 0 for none

    bool ended() const;
    /// Whether it finished without errors and without a missing output.
    bool wentWell() const { return state == zn::TaskRunState::Finished && outputsMissing == 0; }
    /// Whether it ended by itself with some of its outputs, and not with others.
    bool wentWellInPart() const
    {
        return ended() && state != zn::TaskRunState::Cancelled && outputsMissing > 0
            && outputsMissing < outputsExpected;
    }
    /// Whether a worker has the run: it isn't waiting, and it hasn't ended.
    bool taken() const { return !ended() && owner.process != 0; }
};

/// A worker that hasn't been heard of for so many seconds is taken for dead.
inline constexpr std::int64_t heartbeatLimit = 60;

/// Whether the run's worker went away before the run had ended.
bool workerDied(const RunInfo& run, std::int64_t now);
/// "queued", "running" … for a person; "worker died" goes before the state in which the worker left the run, and
/// "3 of 40 failed", counted in outputs, behind that of a run that has finished.
zn::Text stateText(const RunInfo& run, std::int64_t now);

/// What a launch hands over.
struct NewRun {
    zn::Text guid;
    zn::Text userName;
    zn::ArkSelection selection;
    Variables ownVariables;   ///< what the launch wrote; they win over the definition's
    std::int32_t againOf = 0; ///< the run that this one does again, 0 for none
    /// Writes more in the same transaction, of the run with this number; neither is kept if it raises.
    std::function<void(std::int32_t)> alongside{};
    bool onlyChanged = false; ///< see `RunInfo`
};

/// What a run says about one file; the path is empty for the run as a whole.
struct RunMessage {
    zn::Text path;
    zn::Text sentence;
};

/// What became of one output of a run.
struct RunFileResult : zn::ArkFileResult {
    std::int32_t outputVersion = 0; ///< that the run has made, 0 if it is outside the vault
};

/// What a run did with a file.
struct RunOfFile {
    std::int32_t runId = 0;
    zn::Text taskName;
    std::int64_t launchedAt = 0;
    bool isOutput = false; ///< the run made it; else it read it
    zn::FileOutcome outcome = zn::FileOutcome::Made;
};

/// "made", "replaced", "unchanged", "skipped" or "failed".
zn::Text outcomeText(zn::FileOutcome outcome);

/// The runs of one vault: launching and reading. What a worker writes goes through `RunClaim`.
class RunStore {
public:
    /// Brings the task tables to their last step.
    RunStore(Database& database, std::int32_t vaultId);

    /// Puts a run into the queue, with the variables that the task has at this moment. Returns its number.
    std::int32_t enqueue(const TaskDefinition& task, const NewRun& run, std::int64_t now);

    /// Stores a run that ended before it began, so that whoever looks at runs finds why. Inside a write transaction.
    std::int32_t storeFailed(
        const TaskDefinition& task, zn::TextView userName, const std::string& sentence, std::int64_t now);

    /// `idOrGuid` is the run's number or identifier; the identifier's braces may be left out, its case doesn't count.
    /// Raises `StatusError` E_INVALIDARG with a sentence if there is no such run.
    RunInfo get(zn::TextView idOrGuid);
    RunInfo get(std::int32_t id);
    /// The newest first; those of one task only if `taskName` isn't empty.
    std::vector<RunInfo> list(zn::TextView taskName = {});
    /// Of these, those above a number, those that haven't ended, and those that ended at a time or later.
    std::vector<RunInfo> listChanged(std::int32_t above, std::int64_t endedSince);
    /// Those that a worker has, in the order of their numbers.
    std::vector<RunInfo> listTaken();
    std::int64_t count();
    Variables variables(std::int32_t runId);
    zn::ArkSelection selection(std::int32_t runId);
    std::vector<zn::ArkTaskResultDoc> documents(std::int32_t runId);
    /// In the order in which they came.
    std::vector<RunMessage> messages(std::int32_t runId);
    /// In the order of the files; none of a run whose add-in doesn't tell.
    std::vector<RunFileResult> results(std::int32_t runId);

    /// The files of which a run of the task has made an output, or found it as it should be, with the newest version of
    /// each for which that holds.
    VersionsByFile versionsWithOutputs(zn::TextView taskName);
    /// The runs that read the file or made it, the newest first; each once for each way and outcome.
    std::vector<RunOfFile> runsOf(std::int32_t fileId);

    Database& database() { return m_database; }
    std::int32_t vaultId() const { return m_vaultId; }

private:
    Database& m_database;
    std::int32_t m_vaultId;
};

/// A fresh identifier in the form of `RunInfo::guid`.
zn::Text newGuid();

} // namespace zn::arkin
