#include "arkin/tasks/TaskDetails.h"

#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

namespace zn::arkin {

namespace {

class TaskDetailsCommand : public Command {
public:
    void declare(Arguments& take) override { take.option("ID", m_id, "The run's number or identifier").required(); }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto run = runs.get(zn::toText(m_id));
        auto& desktop = session.desktop(true);
        desktop.requireDisplay();
        TaskDetails details(session.taskHost(), run.id);
        desktop.showDetails(details);
        if (session.json())
            printJson({{"run", run.id}, {"shown", true}});
        return commandDone;
    }

private:
    std::string m_id;
};

} // namespace

MadeCommand taskDetailsCommand() { return std::make_unique<TaskDetailsCommand>(); }

} // namespace zn::arkin
