#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/Assignment.h"
#include "arkin/tasks/VariableRules.h"
#include "contracts/host/ArkTask.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskSet : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the task").required();
        take.option("SETTING", m_settings, "VARIABLE=VALUE");
        take.option("--file-limit", m_fileLimit, "Longest time for one file, such as 90s, 10m or 2h; 0 for none")
            .shownAs("TIME");
    }

    int run(Session& session) override
    {
        if (m_settings.empty() && !m_fileLimit)
            throw zn::commandline::WrongUse("There is nothing to set: name a VARIABLE=VALUE or --file-limit.");
        std::optional<std::int32_t> fileLimit;
        if (m_fileLimit)
            fileLimit = parseFileLimit(zn::toText(*m_fileLimit));
        TaskStore tasks(session.store().database(), session.vault().info().id);
        auto task = tasks.get(zn::toText(m_name));
        const VariableRules rules(session.taskHost(), task.addIn);
        for (const auto& setting : m_settings) {
            const auto [name, value] = splitAssignment(setting);
            if (name == zn::kindVariable)
                throw zn::StatusError(
                    zn::E_INVALIDARG, "A task's kind stays what it is: create a new task of the other kind.");
            task.variables[name] = parseVariable(name, value, rules.known());
        }
        rules.settle(task);
        const auto user = zn::toText(session.vault().caller().user);
        tasks.change(task.id, {task.variables, {}, user, session.platform().clock().now(), fileLimit});
        if (session.json())
            printJson({{"task", zn::toUtf8(task.name)}, {"set", m_settings.size() + (fileLimit ? 1 : 0)}});
        else
            std::cout << "Task '" << zn::toUtf8(task.name) << "' is changed.\n";
        return commandDone;
    }

private:
    std::string m_name;
    std::vector<std::string> m_settings;
    std::optional<std::string> m_fileLimit;
};

} // namespace

MadeCommand taskSetCommand() { return std::make_unique<TaskSet>(); }

} // namespace zn::arkin
