#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/LogText.h"
#include "arkin/commands/frame/TaskText.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskLog : public Command {
public:
    void declare(Arguments& take) override { take.option("ID", m_id, "The run's number or identifier").required(); }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto run = runs.get(zn::toText(m_id));
        if (session.json())
            printJson(toJson(session, runs, run));
        else if (!printLog(session, run))
            std::cerr << (logPath(session, run).empty() ? "The task keeps no log: it has no ErrorLogPath.\n"
                                                        : "The run has logged nothing.\n");
        return commandDone;
    }

private:
    static Json toJson(Session& session, RunStore& runs, const RunInfo& run)
    {
        const auto path = logPath(session, run);
        const auto text = logText(session, run);
        auto list = Json::array();
        for (const auto& message : runs.messages(run.id))
            list.push_back({{"path", session.shown(message.path)}, {"text", zn::toUtf8(message.sentence)}});
        return {{"run", run.id}, {"path", path.empty() ? Json(nullptr) : Json(session.shown(path))},
            {"text", text ? Json(*text) : Json(nullptr)}, {"messages", list}};
    }

    std::string m_id;
};

} // namespace

MadeCommand taskLogCommand() { return std::make_unique<TaskLog>(); }

} // namespace zn::arkin
