#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/OrAnyway.h"
#include "arkin/commands/frame/RunHere.h"
#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/RunAgain.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskAgain : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("ID", m_id, "The run's number or identifier").required();
        take.flag("--failed", m_wish.onlyFailed, "Only the files that failed or were skipped");
        take.flag("--current", m_wish.currentSettings,
            "With the settings that the task has now; else with those that the run had");
        take.flag("--anyway", m_wish.anyway, "Launch it although it can't go well");
        take.flag("--wait", m_wait, "Carry the run out here and wait for its end");
    }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto id = runs.get(zn::toText(m_id)).id;
        const auto launched = orAnyway([&] { return launchAgain(session.taskHost(), id, m_wish); });
        if (session.json() && !m_wait)
            printJson(toJson(session, launched));
        else if (!session.json())
            std::cout << launched.id << std::endl;
        return m_wait ? runOrWatch(session, launched.id) : commandDone;
    }

private:
    std::string m_id;
    AgainWish m_wish;
    bool m_wait = false;
};

} // namespace

MadeCommand taskAgainCommand() { return std::make_unique<TaskAgain>(); }

} // namespace zn::arkin
