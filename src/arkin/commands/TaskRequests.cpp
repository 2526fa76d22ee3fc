#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/TaskText.h"
#include "arkin/store/CheckOut.h"
#include "arkin/tasks/RunRequests.h"

#include <iostream>

namespace zn::arkin {

namespace {

/// What a person asks of a run; the three differ in the request alone.
class TaskRequestCommand : public Command {
public:
    using Request = RunInfo (*)(RunStore&, std::int32_t, std::int64_t);
    explicit TaskRequestCommand(Request request)
        : m_request(request)
    {
    }

    void declare(Arguments& take) override { take.option("ID", m_id, "The run's number or identifier").required(); }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const auto now = session.platform().clock().now();
        const auto run = m_request(runs, runs.get(zn::toText(m_id)).id, now);
        putBackCopies(session.vault()); // of a run that had lost its worker
        if (session.json())
            printJson(toJson(session, run));
        else
            std::cout << "Run " << run.id << ": " << zn::toUtf8(stateText(run, now)) << ".\n";
        return commandDone;
    }

private:
    Request m_request;
    std::string m_id;
};

} // namespace

MadeCommand taskSuspendCommand() { return std::make_unique<TaskRequestCommand>(requestSuspend); }
MadeCommand taskResumeCommand() { return std::make_unique<TaskRequestCommand>(requestResume); }
MadeCommand taskCancelCommand() { return std::make_unique<TaskRequestCommand>(requestCancel); }

} // namespace zn::arkin
