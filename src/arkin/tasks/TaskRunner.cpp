#include "arkin/tasks/TaskRunner.h"

#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"
#include "arkin/tasks/AddInModule.h"
#include "arkin/tasks/RunMonitor.h"

namespace zn::arkin {

using zn::Status;
using zn::TaskRunState;

TaskRunner::TaskRunner(TaskHost host, RunWatcher watcher, const std::atomic<bool>* interrupted)
    : m_host(std::move(host))
    , m_watcher(std::move(watcher))
    , m_interrupted(interrupted)
    , m_room(m_host.clock, interrupted)
{
}

RunInfo TaskRunner::run(const RunClaim& claim)
{
    StopSignal cancelled;
    const RunMonitor monitor(claim, m_host.clock, m_interrupted, cancelled);
    Status code = zn::S_OK;
    std::string failure;
    try {
        auto setting = settingOf(m_host);
        setting.guid = claim.run().guid;
        setting.taskName = claim.run().taskName;
        setting.userName = claim.run().userName;
        setting.runId = claim.run().id;
        setting.launchedAt = claim.run().launchedAt;
        if (m_host.opened)
            m_room.patiently([&] { putBackCopies(*m_host.opened); });
        const auto instance
            = std::make_shared<RunInstance>(claim, setting, m_host.clock, m_host.files, m_room, cancelled, m_watcher);
        if (m_host.opened)
            instance->setUnchangedFiles({*m_host.opened, m_host.files});
        code = callAddIn(claim, instance);
        failure = instance->failure();
    } catch (...) {
        const auto caught = currentFailure();
        code = caught.status;
        failure = caught.sentence;
    }
    m_room.patiently([&] { settle(claim, code, failure); });
    return claim.store().get(claim.run().id);
}

namespace {

/// An add-in tells the commands that it wants with its name; whoever asks for the name alone hears them, too.
class UnheardCommands final : public zn::IArkCmdMgr {
public:
    Status AddHook(std::int32_t, std::int32_t) override { return zn::S_OK; }
};

zn::ArkAddInInfo infoOf(zn::IArkAddIn5& addIn, const zn::Text& programId)
{
    zn::ArkAddInInfo info;
    UnheardCommands commands;
    // One that doesn't tell is known by the name under which it was found.
    if (zn::failed(addIn.GetAddInInfo(&info, &commands)) || info.name.empty())
        info.name = programId;
    return info;
}

/// What the vault does meanwhile, it does for the run.
class ActingFor {
public:
    ActingFor(Vault* vault, ActingRun& run)
        : m_vault(vault)
    {
        tell(&run);
    }
    ~ActingFor() { tell(nullptr); }
    ActingFor(const ActingFor&) = delete;
    ActingFor& operator=(const ActingFor&) = delete;

private:
    void tell(ActingRun* run)
    {
        if (m_vault)
            m_vault->actFor(run);
    }

    Vault* m_vault;
};

} // namespace

Status TaskRunner::callAddIn(const RunClaim& claim, const std::shared_ptr<RunInstance>& instance)
{
    auto selection = claim.store().selection(claim.run().id);
    const auto addIn = loadAddIn(m_host.registry, m_host.files, claim.run().addIn);
    m_room.patiently([&] { claim.writeAddIn(infoOf(*addIn, claim.run().addIn)); });
    zn::ArkCmd cmd;
    cmd.command = zn::TaskCmdRun;
    cmd.vault = m_host.vault;
    cmd.taskObject = instance;
    const ActingFor acting(m_host.opened, instance->paths());
    const Status code = addIn->OnCmd(&cmd, &selection);
    instance->close();
    giveBackTheRest(claim);
    return code;
}

/// Nobody works on a run's files once its add-in has ended, and the next run needs them.
void TaskRunner::giveBackTheRest(const RunClaim& claim)
{
    if (!m_host.opened)
        return;
    Vault& vault = *m_host.opened;
    for (const CheckOutRow& row : checkOutsOfRun(vault, claim.run().id)) {
        const Place place{row.fileId, row.folderId};
        const auto path = vault.pathOf(place);
        std::string sentence = row.baseVersion == 0
            ? "It was added and never checked in, so the vault has given it up again. The file stays on the disk."
            : "It was still checked out when the run ended. The check-out was undone, and the vault keeps version "
                + std::to_string(row.baseVersion) + ".";
        try {
            m_room.patiently([&] { undoCheckOut(vault, row.fileId); });
        } catch (const zn::StatusError& error) {
            if (error.status() == E_ARK_RUN_TAKEN_OVER)
                throw;
            sentence
                = "It is still checked out for the run, since that could not be undone: " + currentFailure().sentence
                + " 'arkin task release " + std::to_string(claim.run().id) + "' tries again.";
        }
        m_room.patiently([&] { claim.addMessage(path, zn::toText(sentence)); });
    }
}

void TaskRunner::settle(const RunClaim& claim, Status code, const std::string& failure)
{
    switch (claim.state()) {
    case TaskRunState::Finished:
    case TaskRunState::FinishedWithErrors:
    case TaskRunState::Cancelled:
        return;
    case TaskRunState::CancelRequested: {
        auto text = std::string("The run was cancelled.");
        if (zn::failed(code))
            text += " It had failed before: " + (failure.empty() ? describeStatus(m_host, code) : failure);
        claim.finish(TaskRunState::Cancelled, code, zn::toText(text), {}, m_host.clock.now());
        return;
    }
    default:
        break;
    }
    auto text = failure;
    if (text.empty() && zn::failed(code))
        text = "The add-in ended with a failure: " + describeStatus(m_host, code) + ".";
    else if (text.empty())
        text = "The add-in ended without reporting how the run went.";
    claim.finish(TaskRunState::FinishedWithErrors, zn::failed(code) ? code : zn::E_UNEXPECTED, zn::toText(text), {},
        m_host.clock.now());
}

} // namespace zn::arkin
