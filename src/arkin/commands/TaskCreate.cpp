#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/Assignment.h"
#include "arkin/commands/frame/DefaultMacro.h"
#include "arkin/commands/frame/TaskText.h"
#include "arkin/store/Codes.h"
#include "arkin/tasks/NewTask.h"
#include "arkin/tasks/TaskSetup.h"

#include <fstream>
#include <iostream>

namespace arkin {

namespace {

class TaskCreate : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the task").required();
        take.option("--kind", m_kind, "What the task does").showsDefault().oneOf({"convert", "print", "script"});
        take.option("--from", m_file, "JSON file with the task's variables");
        take.option("--set", m_settings, "VARIABLE=VALUE; wins over the file");
    }

    int run(Session& session) override
    {
        const auto request = readRequest();
        session.tasks().requireFreeName(request.name);
        auto task = fill(session, startTask(request));
        settleTask(task, request, session.variableNames());
        task.createdBy = zn::toText(session.vault().caller().user);
        task.createdAt = session.platform().clock().now();
        session.tasks().create(task);
        if (session.json())
            printJson({{"task", m_name}, {"kind", m_kind}, {"variables", task.variables.size()}});
        else
            std::cout << "Task '" << m_name << "' is made with " << task.variables.size() << " variables.\n";
        return commandDone;
    }

private:
    TaskRequest readRequest() const
    {
        TaskRequest request;
        request.name = zn::toText(m_name);
        request.kind = kindOf(m_kind);
        if (!m_file.empty())
            request.file = readFile();
        for (const auto& setting : m_settings) {
            const auto [name, value] = splitAssignment(setting);
            request.settings[name] = parseVariable(name, value);
        }
        request.script = script(request);
        return request;
    }

    /// Lets the task's pages write every variable, as if an administrator accepted them unseen.
    static TaskDefinition fill(Session& session, TaskDefinition task)
    {
        auto& desktop = session.desktop(false);
        TaskSetup setup(session.taskHost(), std::move(task));
        desktop.fillTask(setup);
        return setup.task();
    }

    TaskFile readFile() const
    {
        std::ifstream stream(m_file, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(stream), {}};
        if (!stream.is_open() || stream.bad())
            throw zn::StatusError(zn::E_INVALIDARG, "The task file " + m_file + " can't be read.");
        try {
            return parseTaskFile(text);
        } catch (const zn::StatusError& error) {
            throw zn::StatusError(error.status(), m_file + ": " + error.what());
        }
    }

    /// A macro named by the file, or the product's own in the form in which the script page keeps it. A script among
    /// the variables wins over both.
    zn::Text script(const TaskRequest& request) const
    {
        if (!request.file.script.empty())
            return readMacro(std::filesystem::path(m_file).parent_path() / request.file.script);
        return defaultMacro(request.kind) + u"\n";
    }

    std::string m_name;
    std::string m_kind = "script";
    std::string m_file;
    std::vector<std::string> m_settings;
};

} // namespace

MadeCommand taskCreateCommand() { return std::make_unique<TaskCreate>(); }

} // namespace arkin
