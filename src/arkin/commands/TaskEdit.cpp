#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/tasks/TaskSetup.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskEdit : public Command {
public:
    void declare(Arguments& take) override { take.option("NAME", m_name, "Name of the task").required(); }

    int run(Session& session) override
    {
        const auto task = session.tasks().get(zn::toText(m_name));
        auto& desktop = session.desktop(true);
        desktop.requireDisplay();
        TaskSetup setup(session.taskHost(), task);
        const bool changed = desktop.editTask(setup);
        if (session.json())
            printJson({{"task", zn::toUtf8(task.name)}, {"changed", changed}});
        else
            std::cout << "Task '" << zn::toUtf8(task.name) << (changed ? "' is changed.\n" : "' is left as it was.\n");
        return commandDone;
    }

private:
    std::string m_name;
};

} // namespace

MadeCommand taskEditCommand() { return std::make_unique<TaskEdit>(); }

} // namespace zn::arkin
