#include "arkin/commands/frame/MakeTask.h"

#include "arkin/commands/frame/DefaultMacro.h"
#include "arkin/tasks/TaskSetup.h"
#include "platform/WholeFile.h"

namespace zn::arkin {

namespace {

TaskDefinition fill(Session& session, TaskDefinition task)
{
    auto& desktop = session.desktop(false);
    TaskSetup setup(session.taskHost(), std::move(task));
    desktop.fillTask(setup);
    return setup.task();
}

} // namespace

TaskFile readTaskFile(const std::filesystem::path& file, const KnownVariables& known)
{
    constexpr std::uintmax_t largest = 16 << 20;
    const std::string text = zn::readWholeFile(file, largest, "The task file");
    try {
        return parseTaskFile(text, known);
    } catch (const zn::StatusError& error) {
        throw zn::StatusError(error.status(), file.string() + ": " + error.what());
    }
}

zn::Text macroOf(const TaskFile& task, const std::filesystem::path& file, zn::TaskKind kind)
{
    return task.script.empty() ? defaultMacro(kind) + u"\n" : readMacro(file.parent_path() / task.script);
}

std::size_t makeTask(Session& session, const VariableRules& rules, const TaskRequest& request)
{
    session.tasks().requireFreeName(request.name);
    auto task = fill(session, startTask(request));
    settleTask(task, request);
    rules.settle(task);
    task.createdBy = zn::toText(session.vault().caller().user);
    task.createdAt = session.platform().clock().now();
    session.tasks().create(task);
    return task.variables.size();
}

} // namespace zn::arkin
