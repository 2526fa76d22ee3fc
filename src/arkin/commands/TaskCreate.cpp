#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/Assignment.h"
#include "arkin/commands/frame/MakeTask.h"
#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/VariableRules.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskCreate : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the task").required();
        take.option("--kind", m_kind, "What the task does").showsDefault().oneOf({"convert", "print", "script"});
        take.option("--from", m_file, "JSON file with the task's variables");
        take.option("--file-limit", m_fileLimit, "Longest time for one file, such as 90s, 10m or 2h; 0 for none")
            .shownAs("TIME");
        take.option("--identical", m_identical, "What an output makes that is as the vault has it")
            .oneOf({"new-version", "no-version"});
        take.option("--set", m_settings, "VARIABLE=VALUE; wins over the file");
    }

    int run(Session& session) override
    {
        const VariableRules rules(session.taskHost(), defaultAddIn);
        const auto count = makeTask(session, rules, readRequest(rules.known()));
        if (session.json())
            printJson({{"task", m_name}, {"kind", m_kind}, {"variables", count}});
        else
            std::cout << "Task '" << m_name << "' is made with " << count << " variables.\n";
        return commandDone;
    }

private:
    TaskRequest readRequest(const KnownVariables& known) const
    {
        TaskRequest request;
        request.name = zn::toText(m_name);
        request.kind = kindOf(m_kind);
        if (!m_file.empty())
            request.file = readTaskFile(m_file, known);
        if (m_fileLimit)
            request.fileLimit = parseFileLimit(zn::toText(*m_fileLimit));
        if (m_identical)
            request.keepsIdentical = parseKeepsIdentical(zn::toText(*m_identical));
        for (const auto& setting : m_settings) {
            const auto [name, value] = splitAssignment(setting);
            request.settings[name] = parseVariable(name, value, known);
        }
        request.script = macroOf(request.file, m_file, request.kind);
        return request;
    }

    std::string m_name;
    std::string m_kind = "script";
    std::string m_file;
    std::optional<std::string> m_fileLimit;
    std::optional<std::string> m_identical;
    std::vector<std::string> m_settings;
};

} // namespace

MadeCommand taskCreateCommand() { return std::make_unique<TaskCreate>(); }

} // namespace zn::arkin
