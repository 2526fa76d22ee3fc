#include "arkin/tasks/RunInstance.h"

#include "arkin/store/Codes.h"

namespace zn::arkin {

using zn::Status;
using zn::TaskRunState;
using zn::Text;
using zn::TextView;
using zn::Value;

namespace {

/// Every write to the database is synced to the disk; a run of many small files must not pay for one a file.
constexpr std::chrono::milliseconds progressInterval{250};

} // namespace

RunInstance::RunInstance(RunClaim claim, RunSetting setting, zn::Clock& clock, zn::FileSystem& files, RoomWait& room,
    StopSignal& cancelled, RunWatcher watcher)
    : m_claim(std::move(claim))
    , m_setting(std::move(setting))
    , m_clock(clock)
    , m_room(room)
    , m_cancelled(cancelled)
    , m_watcher(std::move(watcher))
    , m_paths(m_claim, clock, files, room, [this](const std::string& sentence) { tellWaiting(sentence); })
    , m_variables(m_claim.store().variables(m_claim.run().id))
{
}

Status RunInstance::failed()
{
    const auto failure = currentFailure();
    if (m_failure.empty())
        m_failure = failure.sentence;
    return failure.status;
}

void RunInstance::tell() const
{
    if (m_watcher)
        m_watcher(m_progress);
}

Status RunInstance::GetInstanceGuid(Text& guid)
{
    guid = m_claim.run().guid;
    return zn::S_OK;
}

Status RunInstance::SetProgressRange(std::int32_t total, std::int32_t position, TextView text)
{
    m_progress.total = total;
    m_progress.position = position;
    m_progress.text = text;
    return showProgress(true);
}

Status RunInstance::SetProgressPos(std::int32_t position, TextView text)
{
    m_progress.position = position;
    m_progress.text = text;
    return showProgress(position >= m_progress.total);
}

Status RunInstance::showProgress(bool mustBeKept)
{
    try {
        tell();
        m_progressPending = true;
        if (mustBeKept || std::chrono::steady_clock::now() - m_progressWritten >= progressInterval)
            flushProgress();
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

TaskRunState RunInstance::changeState(std::span<const TaskRunState> from, TaskRunState to)
{
    auto state = to;
    m_room.patiently([&] { state = m_claim.changeState(from, to); });
    return state;
}

void RunInstance::flushProgress()
{
    if (!m_progressPending)
        return;
    m_room.patiently([&] { m_claim.writeProgress(m_progress.total, m_progress.position, m_progress.text); });
    m_progressPending = false;
    m_progressWritten = std::chrono::steady_clock::now();
}

/// A request that has been taken back before the add-in acted on it must not stand for ever: a resume that finds
/// nothing suspended leaves the run running, a second suspend that finds it suspended leaves it so.
TaskRunState RunInstance::currentState()
{
    const auto state = m_claim.state();
    if (state == TaskRunState::ResumeRequested && !m_suspendSeen) {
        const TaskRunState from[] = {TaskRunState::ResumeRequested};
        return changeState(from, TaskRunState::Running);
    }
    if (state == TaskRunState::SuspendRequested && m_suspended) {
        const TaskRunState from[] = {TaskRunState::SuspendRequested};
        return changeState(from, TaskRunState::Suspended);
    }
    m_suspendSeen = m_suspendSeen || state == TaskRunState::SuspendRequested;
    return state;
}

Status RunInstance::GetStatus(TaskRunState& state)
{
    try {
        state = currentState();
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

Status RunInstance::SetStatus(
    TaskRunState state, Status code, TextView text, const std::vector<zn::ArkTaskResultDoc>& results)
{
    try {
        flushProgress();
        flushMacros();
        if (state == TaskRunState::Suspended) {
            const TaskRunState from[] = {TaskRunState::Running, TaskRunState::SuspendRequested};
            m_suspended = m_suspendSeen = true;
            m_progress.state = changeState(from, state);
        } else if (state == TaskRunState::Running) {
            const TaskRunState from[] = {TaskRunState::Suspended, TaskRunState::ResumeRequested};
            m_suspended = m_suspendSeen = false;
            m_progress.state = changeState(from, state);
        } else if (state == TaskRunState::Finished || state == TaskRunState::FinishedWithErrors) {
            m_room.patiently([&] { m_claim.finish(state, code, text, results, m_clock.now()); });
            m_progress.state = state;
        } else {
            return zn::E_INVALIDARG;
        }
        tell();
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

Status RunInstance::GetValue(TextView name, Value& value)
{
    const auto found = m_variables.find(Text(name));
    value = found == m_variables.end() ? Value() : found->second;
    return found == m_variables.end() ? zn::S_FALSE : zn::S_OK;
}

Status RunInstance::SetValue(TextView name, const Value& value)
{
    try {
        m_room.patiently([&] { m_claim.writeVariable(name, value); });
        m_variables[Text(name)] = fromStoredVariable(toStoredVariable(value));
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

Status RunInstance::GetTaskName(Text& name)
{
    name = m_claim.run().taskName;
    return zn::S_OK;
}

Status RunInstance::AddMessage(TextView path, TextView sentence)
{
    try {
        m_room.patiently([&] { m_claim.addMessage(path, sentence); });
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

Status RunInstance::SetOutputs(std::int32_t expected, std::int32_t missing)
{
    try {
        m_room.patiently([&] { m_claim.writeOutputs(expected, missing); });
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

Status RunInstance::SetFileResults(const std::vector<zn::ArkFileResult>& results)
{
    try {
        m_room.patiently([&] { m_claim.writeResults(results, m_paths.identical()); });
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

Status RunInstance::NoteApplication(const zn::ArkApplication& application)
{
    try {
        m_room.patiently([&] { m_claim.writeApplication(application); });
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

Status RunInstance::NoteMacro(const zn::ArkRunMacro& macro)
{
    try {
        m_macros.push_back(macro);
        if (std::chrono::steady_clock::now() - m_macrosWritten >= progressInterval)
            flushMacros();
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

void RunInstance::flushMacros()
{
    if (m_macros.empty())
        return;
    m_room.patiently([&] { m_claim.writeMacros(m_macros); });
    m_macros.clear();
    m_macrosWritten = std::chrono::steady_clock::now();
}

void RunInstance::close()
{
    try {
        flushMacros();
    } catch (...) {
        failed();
    }
}

Status RunInstance::GetUnchanged(const std::vector<zn::ArkSourceFile>& files, std::vector<Text>& sentences)
{
    try {
        sentences.assign(files.size(), Text());
        if (m_unchanged && m_claim.run().onlyChanged)
            sentences = m_unchanged->sentences(m_claim.run(), files);
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

Status RunInstance::AnnounceOutputs(const std::vector<zn::ArkOutputNames>& names)
{
    try {
        m_paths.announce(names);
        return zn::S_OK;
    } catch (...) {
        return failed();
    }
}

/// A file that the run can't have costs this file only: the add-in tells of it.
Status RunInstance::ReserveOutput(TextView path)
{
    try {
        m_paths.keepOutput(path);
        return zn::S_OK;
    } catch (...) {
        const auto status = currentFailure().status;
        return status == E_ARK_RUN_TAKEN_OVER ? zn::E_ABORT : status;
    }
}

void RunInstance::tellWaiting(const std::string& sentence)
{
    m_progress.text = zn::toText(sentence);
    m_progressPending = true;
    tell();
    flushProgress();
}

Status RunInstance::SetStopHandler(std::function<void()> stop)
{
    m_cancelled.setHandler(std::move(stop));
    return zn::S_OK;
}

Status RunInstance::GetFileLimit(std::int32_t& seconds)
{
    seconds = m_claim.run().fileLimit;
    return zn::S_OK;
}

Status RunInstance::GetVariable(const Value& idOrName, Value& value)
{
    try {
        return runValue(m_setting, idOrName, value);
    } catch (...) {
        return failed();
    }
}

} // namespace zn::arkin
