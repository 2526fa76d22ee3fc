#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/TaskText.h"

#include <fmt/format.h>

namespace zn::arkin {

namespace {

class TaskResults : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("ID", m_id, "The run's number or identifier").required();
        take.flag("--failed", m_failed, "Only what failed or was skipped");
    }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{{"RESULT", "SECONDS", "FILE"}};
        for (const auto& result : runs.results(runs.get(zn::toText(m_id)).id)) {
            const bool lacking
                = result.outcome == zn::FileOutcome::Failed || result.outcome == zn::FileOutcome::Skipped;
            if (m_failed && !lacking)
                continue;
            list.push_back(toJson(session, result));
            rows.push_back({zn::toUtf8(outcomeText(result.outcome)), fmt::format("{:.1f}", result.seconds),
                resultLine(session, result)});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows, m_failed ? "Nothing failed." : "The run has told nothing of single files.");
        return commandDone;
    }

private:
    std::string m_id;
    bool m_failed = false;
};

} // namespace

MadeCommand taskResultsCommand() { return std::make_unique<TaskResults>(); }

} // namespace zn::arkin
