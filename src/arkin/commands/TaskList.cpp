#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/TaskText.h"

#include <map>

namespace zn::arkin {

namespace {

class TaskList : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{{"TASK", "KIND", "MADE BY", "MADE", "LAST RUN"}};
        const auto lastRuns = lastRunTexts(session);
        for (const auto& task : TaskStore(session.store().database(), session.vault().info().id).list()) {
            const auto kind = kindWord(task.kind());
            const auto last = lastRuns.find(zn::foldCase(task.name));
            list.push_back({{"task", zn::toUtf8(task.name)}, {"kind", kind}, {"createdBy", zn::toUtf8(task.createdBy)},
                {"created", jsonTime(task.createdAt)},
                {"lastRun", last == lastRuns.end() ? Json() : Json(last->second)}});
            rows.push_back({zn::toUtf8(task.name), kind, zn::toUtf8(task.createdBy), shownTime(task.createdAt),
                last == lastRuns.end() ? "-" : last->second});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows, "There are no tasks; 'arkin task create' makes one.");
        return commandDone;
    }

private:
    /// How the newest run of each task stands, by the task's folded name.
    static std::map<zn::Text, std::string> lastRunTexts(Session& session)
    {
        std::map<zn::Text, std::string> texts;
        const auto now = session.platform().clock().now();
        for (const auto& run : RunStore(session.store().database(), session.vault().info().id).list())
            texts.emplace(zn::foldCase(run.taskName), zn::toUtf8(stateText(run, now)));
        return texts;
    }
};

} // namespace

MadeCommand taskListCommand() { return std::make_unique<TaskList>(); }

} // namespace zn::arkin
