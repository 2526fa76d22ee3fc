#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

namespace zn::arkin {

namespace {

class Explorer : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("FOLDER", m_folder, "Folder of the vault to begin with; else the one of the last time");
    }

    int run(Session& session) override
    {
        const std::int32_t folder = m_folder.empty() ? 0 : session.folderAt(m_folder);
        auto& desktop = session.desktop(true);
        desktop.requireDisplay();
        desktop.showExplorer(session.taskHost(), folder, session.platform().home().cacheFolder());
        if (session.json())
            printJson({{"shown", true}});
        return commandDone;
    }

private:
    std::string m_folder;
};

} // namespace

MadeCommand explorerCommand() { return std::make_unique<Explorer>(); }

} // namespace zn::arkin
