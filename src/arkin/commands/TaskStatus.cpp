#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/TaskText.h"

namespace zn::arkin {

namespace {

class TaskStatus : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("ID", m_id, "The run's number or identifier; else all runs, the newest first");
        take.option("--task", m_task, "Of all runs those of this task");
    }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        if (m_id.empty())
            return showAll(session, runs);
        const auto run = runs.get(zn::toText(m_id));
        if (session.json())
            printJson(toJson(session, run));
        else
            printRun(session, run);
        return commandDone;
    }

private:
    int showAll(Session& session, RunStore& runs) const
    {
        const auto now = session.platform().clock().now();
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{{"RUN", "TASK", "STATE", "PROGRESS", "LAUNCHED", "TEXT"}};
        for (const auto& run : runs.list(zn::toText(m_task))) {
            if (session.json())
                list.push_back(toJson(session, run));
            rows.push_back({std::to_string(run.id), zn::toUtf8(run.taskName), zn::toUtf8(stateText(run, now)),
                std::to_string(run.progressPosition) + "/" + std::to_string(run.progressTotal),
                shownTime(run.launchedAt), zn::toUtf8(run.resultText)});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows, "There are no runs.");
        return commandDone;
    }

    std::string m_id;
    std::string m_task;
};

} // namespace

MadeCommand taskStatusCommand() { return std::make_unique<TaskStatus>(); }

} // namespace zn::arkin
