#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/TaskText.h"
#include "base/Durations.h"

namespace zn::arkin {

namespace {

/// A long text, such as a macro, by its first line and its length.
std::string shortened(const std::string& value)
{
    const auto end = value.find_first_of("\r\n");
    if (end == std::string::npos || end + 1 >= value.size())
        return value.substr(0, end);
    return value.substr(0, end) + " ... (" + shownCount(static_cast<std::int64_t>(value.size())) + " bytes)";
}

class TaskShow : public Command {
public:
    void declare(Arguments& take) override { take.option("NAME", m_name, "Name of the task").required(); }

    int run(Session& session) override
    {
        const auto task = TaskStore(session.store().database(), session.vault().info().id).get(zn::toText(m_name));
        Json variables = Json::object();
        std::vector<std::vector<std::string>> rows{{"VARIABLE", "VALUE"}};
        for (const auto& [name, value] : task.variables) {
            variables[zn::toUtf8(name)] = jsonValue(value);
            rows.push_back({zn::toUtf8(name), shortened(shownValue(value))});
        }
        if (task.host.fileLimit > 0)
            rows.push_back({"longest time for one file", zn::toUtf8(zn::durationText(task.host.fileLimit))});
        const char* const identical = task.host.keepsIdentical ? "no-version" : "new-version";
        if (task.host.keepsIdentical)
            rows.push_back({"outputs as the vault has them", identical});
        if (!task.host.notices.failed.empty())
            rows.push_back({"told of failures", task.host.notices.failed});
        if (!task.host.notices.ended.empty())
            rows.push_back({"told of every end", task.host.notices.ended});
        auto menu = Json::array();
        for (const auto& entry : task.menu) {
            menu.push_back({{"text", zn::toUtf8(entry.menuText)}, {"description", zn::toUtf8(entry.statusText)}});
            rows.push_back({"menu entry", zn::toUtf8(entry.menuText)});
        }
        if (session.json())
            printJson({{"fileLimit", task.host.fileLimit}, {"identical", identical},
                {"whenFailed", task.host.notices.failed}, {"whenEnded", task.host.notices.ended},
                {"task", zn::toUtf8(task.name)}, {"kind", kindWord(task.kind())}, {"addIn", zn::toUtf8(task.addIn)},
                {"createdBy", zn::toUtf8(task.createdBy)}, {"created", jsonTime(task.createdAt)},
                {"variables", variables}, {"menu", menu}});
        else
            printTable(rows, "The task has no variables.");
        return commandDone;
    }

private:
    std::string m_name;
};

} // namespace

MadeCommand taskShowCommand() { return std::make_unique<TaskShow>(); }

} // namespace zn::arkin
