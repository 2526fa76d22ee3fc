#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/Assignment.h"
#include "arkin/tasks/NewTask.h"

#include <iostream>

namespace arkin {

namespace {

class TaskSet : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the task").required();
        take.option("SETTING", m_settings, "VARIABLE=VALUE").required();
    }

    int run(Session& session) override
    {
        TaskStore tasks(session.store().database(), session.vault().info().id);
        const auto task = tasks.get(zn::toText(m_name));
        auto variables = task.variables;
        for (const auto& setting : m_settings) {
            const auto [name, value] = splitAssignment(setting);
            if (name == u"__type")
                throw zn::StatusError(
                    zn::E_INVALIDARG, "A task's kind stays what it is: create a new task of the other kind.");
            variables[name] = parseVariable(name, value);
        }
        requireFormat(variables, task.kind());
        deriveVariables(variables, task.kind(), session.variableNames());
        const auto user = zn::toText(session.vault().caller().user);
        tasks.change(task.id, {variables, {}, user, session.platform().clock().now()});
        if (session.json())
            printJson({{"task", zn::toUtf8(task.name)}, {"set", m_settings.size()}});
        else
            std::cout << "Task '" << zn::toUtf8(task.name) << "' is changed.\n";
        return commandDone;
    }

private:
    std::string m_name;
    std::vector<std::string> m_settings;
};

} // namespace

MadeCommand taskSetCommand() { return std::make_unique<TaskSet>(); }

} // namespace arkin
