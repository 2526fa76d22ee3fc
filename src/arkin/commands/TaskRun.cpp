#include "arkin/commands/Factories.h"

#include "arkin/commands/frame/RunHere.h"

namespace zn::arkin {

namespace {

class TaskRun : public Command {
public:
    void declare(Arguments& take) override { take.option("ID", m_id, "The run's number or identifier").required(); }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto id = runs.get(zn::toText(m_id)).id;
        return runHere(session, RunClaim::take(runs, id, thisProcess(), session.platform().clock().now()));
    }

private:
    std::string m_id;
};

} // namespace

MadeCommand taskRunCommand() { return std::make_unique<TaskRun>(); }

} // namespace zn::arkin
