#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/TaskText.h"

namespace zn::arkin {

namespace {

class TaskList : public Command {
public:
    void declare(Arguments&) override { }

    int run(Session& session) override
    {
        auto list = Json::array();
        std::vector<std::vector<std::string>> rows{{"TASK", "KIND", "MADE BY", "MADE"}};
        for (const auto& task : TaskStore(session.store().database(), session.vault().info().id).list()) {
            const auto kind = kindWord(task.kind());
            list.push_back({{"task", zn::toUtf8(task.name)}, {"kind", kind}, {"createdBy", zn::toUtf8(task.createdBy)},
                {"created", jsonTime(task.createdAt)}});
            rows.push_back({zn::toUtf8(task.name), kind, zn::toUtf8(task.createdBy), shownTime(task.createdAt)});
        }
        if (session.json())
            printJson(list);
        else
            printTable(rows, "There are no tasks; 'arkin task create' makes one.");
        return commandDone;
    }
};

} // namespace

MadeCommand taskListCommand() { return std::make_unique<TaskList>(); }

} // namespace zn::arkin
