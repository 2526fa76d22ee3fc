#include "arkin/commands/frame/RunHere.h"

#include "arkin/commands/frame/Command.h"
#include "arkin/commands/frame/Interrupt.h"
#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/commands/frame/SendNotice.h"
#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/TaskRunner.h"

#include <iostream>

namespace zn::arkin {

namespace {

constexpr std::chrono::milliseconds watchInterval{300};

int printEnd(Session& session, const RunInfo& run)
{
    if (session.json())
        printJson(toJson(session, run));
    else
        std::cout << endLine(session, run) << "\n";
    return run.wentWell() ? commandDone : run.wentWellInPart() ? commandDoneInPart : commandFailed;
}

int watchUntilEnded(Session& session, RunStore& runs, std::int32_t runId)
{
    auto& clock = session.platform().clock();
    ProgressLine progress(!session.json());
    auto run = runs.get(runId);
    while (!run.ended() && !workerDied(run, clock.now())) {
        progress.show(run.progressPosition, run.progressTotal, shownProgress(session, run.progressText));
        clock.sleep(watchInterval);
        run = runs.get(runId);
    }
    progress.clear();
    return printEnd(session, run);
}

} // namespace

int runHere(Session& session, const RunClaim& claim)
{
    const Interrupt interrupt;
    ProgressLine line(!session.json());
    const auto watcher = [&](const RunProgress& progress) {
        line.show(progress.position, progress.total, shownProgress(session, progress.text));
    };
    const auto run = TaskRunner(session.taskHost(), watcher, &interrupt.flag()).run(claim);
    line.clear();
    sendNotices(session.taskHost(), noticeSender(session));
    return printEnd(session, run);
}

int runOrWatch(Session& session, std::int32_t runId)
{
    RunStore runs(session.store().database(), session.vault().info().id);
    const auto now = session.platform().clock().now();
    try {
        return runHere(session, RunClaim::take(runs, runId, thisProcess(), now));
    } catch (const zn::StatusError&) {
        if (!runs.get(runId).taken())
            throw;
    }
    return watchUntilEnded(session, runs, runId);
}

} // namespace zn::arkin
