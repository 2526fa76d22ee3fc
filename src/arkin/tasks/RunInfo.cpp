#include "arkin/tasks/RunStore.h"

#include "arkin/store/Uuid.h"

namespace zn::arkin {

using zn::TaskRunState;

namespace {

struct StateName {
    TaskRunState state;
    const char16_t* name;
};

const StateName stateNames[] = {
    {TaskRunState::Queued, u"queued"},
    {TaskRunState::Running, u"running"},
    {TaskRunState::Suspended, u"suspended"},
    {TaskRunState::CancelRequested, u"cancel requested"},
    {TaskRunState::Finished, u"finished"},
    {TaskRunState::Cancelled, u"cancelled"},
    {TaskRunState::FinishedWithErrors, u"finished with errors"},
    {TaskRunState::SuspendRequested, u"suspend requested"},
    {TaskRunState::ResumeRequested, u"resume requested"},
};

zn::Text nameOf(TaskRunState state)
{
    for (const auto& row : stateNames)
        if (row.state == state)
            return row.name;
    return u"state " + zn::numberText(static_cast<std::int32_t>(state));
}

} // namespace

bool RunInfo::ended() const
{
    return state == TaskRunState::Finished || state == TaskRunState::Cancelled
        || state == TaskRunState::FinishedWithErrors;
}

bool workerDied(const RunInfo& run, std::int64_t now)
{
    return run.taken() && (!mayBeAlive(run.owner) || now - run.heartbeatAt > heartbeatLimit);
}

zn::Text stateText(const RunInfo& run, std::int64_t now)
{
    auto name = nameOf(run.state);
    // Whoever cancels a run knows that it is not whole.
    if (run.ended() && run.state != TaskRunState::Cancelled && run.outputsMissing > 0)
        name += u", " + zn::numberText(run.outputsMissing) + u" of " + zn::numberText(run.outputsExpected) + u" failed";
    return workerDied(run, now) ? u"worker died (" + name + u")" : name;
}

zn::Text newGuid() { return u"{" + zn::toUpper(zn::toText(newUuid())) + u"}"; }

} // namespace zn::arkin
