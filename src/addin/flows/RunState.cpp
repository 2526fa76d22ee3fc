#include "addin/flows/RunState.h"

namespace zn {

namespace {

constexpr std::chrono::milliseconds suspendedPause{5000};

TaskRunState readState(IArkTaskInstance& instance)
{
    TaskRunState state{};
    checkStatus(instance.GetStatus(state));
    if (state == TaskRunState::CancelRequested)
        throw RunStopped{};
    return state;
}

} // namespace

void pollRunState(IArkTaskInstance& instance, Clock& clock)
{
    if (readState(instance) != TaskRunState::SuspendRequested)
        return;
    checkStatus(instance.SetStatus(TaskRunState::Suspended, S_OK, {}, {}));
    do {
        clock.sleep(suspendedPause);
    } while (readState(instance) != TaskRunState::ResumeRequested);
    checkStatus(instance.SetStatus(TaskRunState::Running, S_OK, {}, {}));
}

} // namespace zn
