#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/Assignment.h"
#include "arkin/tasks/Notice.h"
#include "arkin/tasks/VariableRules.h"
#include "contracts/host/ArkTask.h"

#include <algorithm>
#include <array>
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
        take.option("--identical", m_identical, "What an output makes that is as the vault has it")
            .oneOf({"new-version", "no-version"});
        take.option("--when-failed", m_whenFailed,
                "Who is told of runs with failures: a command with its full path, mail:ADDRESS, or '' for nobody")
            .shownAs("WHOM");
        take.option("--when-ended", m_whenEnded, "Who is told of all runs that have ended; likewise").shownAs("WHOM");
    }

    int run(Session& session) override
    {
        const auto hostSettings = static_cast<std::size_t>(
            std::ranges::count_if(std::array{&m_fileLimit, &m_identical, &m_whenFailed, &m_whenEnded},
                [](const auto* option) { return option->has_value(); }));
        if (m_settings.empty() && hostSettings == 0)
            throw zn::commandline::WrongUse("There is nothing to set: name a VARIABLE=VALUE or an option.");
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
        changeHostSettings(task.host);
        const auto user = zn::toText(session.vault().caller().user);
        tasks.change(task.id, {task.variables, {}, user, session.platform().clock().now(), task.host});
        if (session.json())
            printJson({{"task", zn::toUtf8(task.name)}, {"set", m_settings.size() + hostSettings}});
        else
            std::cout << "Task '" << zn::toUtf8(task.name) << "' is changed.\n";
        return commandDone;
    }

private:
    void changeHostSettings(HostSettings& host) const
    {
        if (m_fileLimit)
            host.fileLimit = parseFileLimit(zn::toText(*m_fileLimit));
        if (m_identical)
            host.keepsIdentical = parseKeepsIdentical(zn::toText(*m_identical));
        for (const auto& [wanted, notice] :
            {std::pair(&m_whenFailed, &host.notices.failed), std::pair(&m_whenEnded, &host.notices.ended)}) {
            if (!*wanted)
                continue;
            requireNotice(**wanted);
            *notice = **wanted;
        }
    }

    std::string m_name;
    std::vector<std::string> m_settings;
    std::optional<std::string> m_fileLimit;
    std::optional<std::string> m_identical;
    std::optional<std::string> m_whenFailed;
    std::optional<std::string> m_whenEnded;
};

} // namespace

MadeCommand taskSetCommand() { return std::make_unique<TaskSet>(); }

} // namespace zn::arkin
