#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"
#include "arkin/tasks/RunStore.h"

namespace zn::arkin {

namespace {

class Monitor : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("ID", m_id, "Run to begin with, by its number or identifier");
    }

    int run(Session& session) override
    {
        RunStore runs(session.store().database(), session.vault().info().id);
        const std::int32_t run = m_id.empty() ? 0 : runs.get(zn::toText(m_id)).id;
        auto& desktop = session.desktop(true);
        desktop.requireDisplay();
        desktop.showMonitor(session.taskHost(), run, session.platform().home().cacheFolder());
        if (session.json())
            printJson({{"shown", true}});
        return commandDone;
    }

private:
    std::string m_id;
};

} // namespace

MadeCommand monitorCommand() { return std::make_unique<Monitor>(); }

} // namespace zn::arkin
