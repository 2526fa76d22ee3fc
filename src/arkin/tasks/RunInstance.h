#pragma once

#include "arkin/tasks/RunClaim.h"
#include "arkin/tasks/RunPaths.h"
#include "arkin/tasks/RunValues.h"
#include "arkin/tasks/StopSignal.h"
#include "arkin/tasks/UnchangedFiles.h"
#include "contracts/host/ArkTask.h"
#include "platform/Clock.h"

#include <chrono>
#include <functional>
#include <optional>

namespace zn::arkin {

/// Where a run stands, for whoever watches it.
struct RunProgress {
    std::int32_t total = 0;
    std::int32_t position = 0;
    zn::Text text;
    zn::TaskRunState state = zn::TaskRunState::Running;
};
using RunWatcher = std::function<void(const RunProgress&)>;

/// A run on its worker, as the add-in sees it. All writes go through the claim. The definition's variables are those
/// of the launch; they are read once, and only this worker writes them.
///
/// Of two answers that cross, the person's request wins over the add-in's report: a run that was asked to resume or to
/// cancel while the add-in was about to report that it is suspended is not marked as suspended.
class RunInstance final : public zn::IArkTaskInstance,
                          public zn::IArkRunMessages,
                          public zn::IArkRunResults,
                          public zn::IArkRunAudit,
                          public zn::IArkUnchangedFiles,
                          public zn::IArkRunPaths,
                          public zn::IArkRunControl {
public:
    /// `clock`, `files`, `room` and `cancelled` outlive the instance.
    RunInstance(RunClaim claim, RunSetting setting, zn::Clock& clock, zn::FileSystem& files, RoomWait& room,
        StopSignal& cancelled, RunWatcher watcher = {});

    /// The first failure of a write, with its sentence; empty while all went well. An add-in may pass a failed
    /// status over, the host may not.
    const std::string& failure() const { return m_failure; }
    /// To be called when the add-in has ended: writes what it has told and isn't in the database yet. What fails is
    /// `failure`.
    void close();
    /// Who knows what earlier runs have done; without it all files count as changed.
    void setUnchangedFiles(const UnchangedFiles& unchanged) { m_unchanged = unchanged; }
    /// What the run keeps for itself; a vault acts for it.
    RunPaths& paths() { return m_paths; }

    zn::Status GetInstanceGuid(zn::Text& guid) override;
    zn::Status SetProgressRange(std::int32_t total, std::int32_t position, zn::TextView text) override;
    zn::Status SetProgressPos(std::int32_t position, zn::TextView text) override;
    zn::Status GetStatus(zn::TaskRunState& state) override;
    zn::Status SetStatus(zn::TaskRunState state, zn::Status code, zn::TextView text,
        const std::vector<zn::ArkTaskResultDoc>& results) override;
    zn::Status GetValue(zn::TextView name, zn::Value& value) override;
    zn::Status SetValue(zn::TextView name, const zn::Value& value) override;
    zn::Status GetTaskName(zn::Text& name) override;
    zn::Status GetVariable(const zn::Value& idOrName, zn::Value& value) override;
    zn::Status AddMessage(zn::TextView path, zn::TextView sentence) override;
    zn::Status SetOutputs(std::int32_t expected, std::int32_t missing) override;
    zn::Status SetFileResults(const std::vector<zn::ArkFileResult>& results) override;
    zn::Status NoteApplication(const zn::ArkApplication& application) override;
    zn::Status NoteMacro(const zn::ArkRunMacro& macro) override;
    zn::Status GetUnchanged(const std::vector<zn::ArkSourceFile>& files, std::vector<zn::Text>& sentences) override;
    zn::Status AnnounceOutputs(const std::vector<zn::ArkOutputNames>& names) override;
    zn::Status ReserveOutput(zn::TextView path) override;
    zn::Status SetStopHandler(std::function<void()> stop) override;
    zn::Status GetFileLimit(std::int32_t& seconds) override;

private:
    zn::Status failed();
    zn::Status showProgress(bool mustBeKept);
    zn::TaskRunState changeState(std::span<const zn::TaskRunState> from, zn::TaskRunState to);
    void flushProgress();
    void flushMacros();
    zn::TaskRunState currentState();
    void tell() const;
    void tellWaiting(const std::string& sentence);

    RunClaim m_claim;
    RunSetting m_setting;
    zn::Clock& m_clock;
    RoomWait& m_room;
    StopSignal& m_cancelled;
    RunWatcher m_watcher;
    RunPaths m_paths;
    Variables m_variables;
    std::optional<UnchangedFiles> m_unchanged;
    RunProgress m_progress;
    bool m_suspended = false;       ///< the add-in waits for a resume
    bool m_suspendSeen = false;     ///< the add-in knows of the request
    bool m_progressPending = false; ///< the database is behind
    std::chrono::steady_clock::time_point m_progressWritten{};
    std::vector<zn::ArkRunMacro> m_macros; ///< that aren't in the database yet
    std::chrono::steady_clock::time_point m_macrosWritten{};
    std::string m_failure;
};

} // namespace zn::arkin
