#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/Interrupt.h"
#include "arkin/commands/frame/ProgressLine.h"
#include "arkin/commands/frame/SendNotice.h"
#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/LaunchFlow.h"
#include "arkin/tasks/RoomWait.h"
#include "arkin/tasks/RunPrune.h"
#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/Worker.h"

#include <iostream>

namespace zn::arkin {

namespace {

class WorkerCommand : public Command {
public:
    void declare(Arguments& take) override
    {
        take.flag("--once", m_once,
            "End when no run waits and none is due any more; the exit code tells whether all went well");
    }

    int run(Session& session) override
    {
        const Interrupt interrupt;
        RoomWait room(session.platform().clock(), &interrupt.flag());
        room.patiently([&] { session.vault(); });
        pruneOnceADay(session, room);
        ProgressLine line(!session.json());
        auto ended = Json::array();
        const auto told = [&](const RunInfo& run, const std::string& text) {
            line.clear();
            if (session.json())
                ended.push_back(toJson(session, run));
            else
                std::cout << text << std::endl;
        };
        const Worker::Listener listener{
            [&](const RunInfo& run) {
                if (!session.json())
                    std::cout << "Run " << run.id << " of '" << zn::toUtf8(run.taskName) << "' starts." << std::endl;
            },
            [&](const RunProgress& progress) {
                line.show(progress.position, progress.total, shownProgress(session, progress.text));
            },
            [&](const RunInfo& run) {
                told(run, endLine(session, run));
                pruneOnceADay(session, room);
            },
            [&](const RunInfo& run, const std::string& sentence) { told(run, sentence); },
            [&](const ScheduledRun& due) {
                if (due.run.ended())
                    told(due.run, endLine(session, due.run));
                else if (!session.json())
                    std::cout << "Schedule " << due.schedule.id << " launches run " << due.run.id << " of '"
                              << zn::toUtf8(due.run.taskName) << "'." << std::endl;
                if (!due.run.ended())
                    printNote(due.sentence);
            },
        };
        // The windows' library is loaded when the first schedule is due, and not by a worker that has none.
        const auto launch = [&](LaunchFlow& flow) {
            std::string taken;
            auto run = session.desktop(false).launchWithDefaults(flow, taken);
            printNote(taken);
            return run;
        };
        const auto tally
            = Worker(session.taskHost(), listener, interrupt.flag(), {launch, noticeSender(session)}).work(m_once);
        if (session.json())
            printJson(ended);
        // A service that was asked to stop isn't started anew for what a run has ended with.
        return tally.asked && !m_once ? commandDone : exitCode(tally);
    }

private:
    static int exitCode(const Worker::Tally& tally)
    {
        if (tally.others == 0 && tally.inPart == 0)
            return commandDone;
        return tally.finished + tally.inPart > 0 ? commandDoneInPart : commandFailed;
    }

    /// A worker runs for months, and each run leaves its records.
    void pruneOnceADay(Session& session, RoomWait& room)
    {
        const auto now = session.platform().clock().now();
        const int days = daysRunsAreKept(session.platform().registry());
        if (days <= 0 || now - m_prunedAt < secondsOfDay)
            return;
        m_prunedAt = now;
        RunStore runs(session.store().database(), session.vault().info().id);
        room.patiently([&] { pruneRuns(runs.database(), runs.vaultId(), now - days * secondsOfDay); });
    }

    bool m_once = false;
    std::int64_t m_prunedAt = 0;
};

} // namespace

MadeCommand workerCommand() { return std::make_unique<WorkerCommand>(); }

} // namespace zn::arkin
