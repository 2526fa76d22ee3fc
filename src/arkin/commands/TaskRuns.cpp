#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/tasks/RunPrune.h"
#include "arkin/tasks/RunStore.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskRunsCommand : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("--older-than", m_days, "Days since the end of the runs whose records go").required();
    }

    int run(Session& session) override
    {
        if (m_days < 0)
            throw zn::StatusError(zn::E_INVALIDARG, "--older-than takes a number of days, 0 or more.");
        const RunStore runs(session.store().database(), session.vault().info().id);
        const auto before = session.platform().clock().now() - m_days * secondsOfDay;
        const int count = pruneRuns(session.store().database(), runs.vaultId(), before);
        if (session.json())
            printJson({{"removed", count}});
        else
            std::cout << "The records of " << count << (count == 1 ? " run are" : " runs are") << " removed.\n";
        return commandDone;
    }

private:
    int m_days = 0;
};

} // namespace

MadeCommand taskRunsCommand() { return std::make_unique<TaskRunsCommand>(); }

} // namespace zn::arkin
