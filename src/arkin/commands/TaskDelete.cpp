#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskDelete : public Command {
public:
    void declare(Arguments& take) override { take.option("NAME", m_name, "Name of the task").required(); }

    int run(Session& session) override
    {
        TaskStore tasks(session.store().database(), session.vault().info().id);
        const auto task = tasks.get(zn::toText(m_name));
        tasks.remove(task.id);
        if (session.json())
            printJson({{"deleted", zn::toUtf8(task.name)}});
        else
            std::cout << "Task '" << zn::toUtf8(task.name) << "' is deleted.\n";
        return commandDone;
    }

private:
    std::string m_name;
};

} // namespace

MadeCommand taskDeleteCommand() { return std::make_unique<TaskDelete>(); }

} // namespace zn::arkin
