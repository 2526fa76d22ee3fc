#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/FileByFile.h"

#include "arkin/store/CheckOut.h"
#include "arkin/tasks/RunStore.h"

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
        const auto places = checkOutsOfRun(session.vault(), run.id);
        if (places.empty() && !session.json())
            std::cout << "Run " << run.id << " has no files checked out.\n";
        FileByFile files(session, {release, "is released"});
        for (const Place& place : places)
            files.work([&] { return place; });
        return files.end();
    }

private:
    static void release(Vault& vault, const Place& place) { undoCheckOut(vault, place.fileId); }

    std::string m_id;
};

} // namespace

MadeCommand taskReleaseCommand() { return std::make_unique<TaskReleaseCommand>(); }

} // namespace zn::arkin
