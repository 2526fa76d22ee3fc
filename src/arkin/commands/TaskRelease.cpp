#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/store/CheckOut.h"
#include "arkin/tasks/RunEnd.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskReleaseCommand : public Command {
public:
    void declare(Arguments& take) override { take.option("ID", m_id, "The run's number or identifier").required(); }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto run = runs.get(zn::toText(m_id));
        if (run.taken() && !run.ended() && !workerDied(run, session.platform().clock().now()))
            throw zn::StatusError(zn::E_INVALIDARG,
                "Run " + std::to_string(run.id)
                    + " is still at work and needs its files. Cancel it first, by 'arkin task cancel'.");
        const auto paths = release(session, run.id);
        if (session.json())
            printJson(paths);
        else if (paths.empty())
            std::cout << "Run " << run.id << " has no files checked out.\n";
        for (const auto& path : session.json() ? std::vector<std::string>() : paths)
            std::cout << path << " is released.\n";
        return commandDone;
    }

private:
    static std::vector<std::string> release(Session& session, std::int32_t run)
    {
        Vault& vault = session.vault();
        std::vector<std::string> paths;
        {
            Transaction transaction(vault.database());
            for (const CheckOutRow& row : checkOutsOfRun(vault, run))
                paths.push_back(session.shown(vault.pathOf({row.fileId, row.folderId})));
            giveBackOfRuns(vault.database(), run);
            transaction.commit();
        }
        putBackCopies(vault);
        return paths;
    }

    std::string m_id;
};

} // namespace

MadeCommand taskReleaseCommand() { return std::make_unique<TaskReleaseCommand>(); }

} // namespace zn::arkin
