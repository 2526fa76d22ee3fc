#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/WorkerStop.h"

#include <iostream>

namespace zn::arkin {

namespace {

class Workers : public Command {
public:
    void declare(Arguments& take) override
    {
        take.flag("--start", m_start, "Start a worker here that goes on when this command has ended");
        take.option("--stop", m_stop, "Stop the worker of this number").shownAs("WORKER").range(1, INT32_MAX);
        take.option("--when", m_when,
                "When it stops: after its run, as without this; after the file at hand (the run is cancelled); or now "
                "(the next worker begins the run anew)")
            .oneOf({"run", "file", "now"});
    }

    int run(Session& session) override
    {
        if (m_start && m_stop != 0)
            throw zn::commandline::WrongUse("A worker is either started or stopped: give --start or --stop.");
        if (!m_when.empty() && m_stop == 0)
            throw zn::commandline::WrongUse("--when says when a worker stops: name it by --stop WORKER.");
        if (m_start)
            session.taskHost().startWorker();
        if (m_stop != 0)
            stop(session);
        else
            show(session);
        return commandDone;
    }

private:
    void stop(Session& session) const
    {
        WorkerStore workers(session.store().database(), session.vault().info().id);
        const auto worker = workers.get(m_stop);
        const bool wasGone = isGone(worker, session.platform().clock().now());
        const auto when = m_when == "now" ? StopWhen::AtOnce
            : m_when == "file"            ? StopWhen::AfterFile
                                          : StopWhen::AfterRun;
        stopWorker(session.taskHost(), m_stop, when);
        if (session.json())
            printJson({{"worker", m_stop}, {"stopped", wasGone || when == StopWhen::AtOnce}});
        else
            std::cout << "Worker " << m_stop << (wasGone ? " was gone, and is forgotten" : stopText(worker, when))
                      << ".\n";
    }

    static const char* stopText(const WorkerInfo& worker, StopWhen when)
    {
        if (when == StopWhen::AtOnce)
            return " is stopped";
        if (!worker.run)
            return " stops";
        return when == StopWhen::AfterFile ? " stops after the file at hand" : " stops after its run";
    }

    void show(Session& session) const
    {
        const auto now = session.platform().clock().now();
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{
            {"WORKER", "USER", "MACHINE", "PROCESS", "STATE", "SINCE", "RUN", "FILE", "HEARD"}};
        for (const auto& worker : WorkerStore(session.store().database(), session.vault().info().id).list()) {
            const auto state = zn::toUtf8(workerStateText(worker, now));
            const auto file = worker.run ? shownProgress(session, worker.run->progressText) : std::string();
            if (session.json())
                list.push_back({{"worker", worker.id == 0 ? Json(nullptr) : Json(worker.id)},
                    {"user", zn::toUtf8(worker.userName)}, {"machine", zn::toUtf8(worker.process.host)},
                    {"process", worker.process.process}, {"state", state}, {"begun", jsonTime(worker.begunAt)},
                    {"since", jsonTime(worker.since)}, {"heard", jsonTime(worker.heardAt)},
                    {"run", worker.run ? Json(worker.run->id) : Json(nullptr)}, {"file", file}});
            rows.push_back({worker.id == 0 ? "-" : std::to_string(worker.id), zn::toUtf8(worker.userName),
                zn::toUtf8(worker.process.host), std::to_string(worker.process.process), state, shownTime(worker.since),
                worker.run ? std::to_string(worker.run->id) : "-", file, shownTime(worker.heardAt)});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows, "There are no workers; 'arkin workers --start' starts one.");
    }

    bool m_start = false;
    std::int32_t m_stop = 0;
    std::string m_when;
};

} // namespace

MadeCommand workersCommand() { return std::make_unique<Workers>(); }

} // namespace zn::arkin
