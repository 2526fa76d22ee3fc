#include "arkin/commands/Factories.h"
#include "arkin/commands/frame/Output.h"

#include "arkin/commands/frame/LaunchItem.h"
#include "arkin/commands/frame/OrAnyway.h"
#include "arkin/commands/frame/RunHere.h"
#include "arkin/commands/frame/TaskText.h"
#include "arkin/tasks/LaunchFlow.h"

#include <iostream>

namespace zn::arkin {

namespace {

class TaskLaunch : public Command {
public:
    void declare(Arguments& take) override
    {
        take.option("NAME", m_name, "Name of the task").required();
        take.option("PATH", m_paths, "Files and folders of the vault");
        take.option("--version", m_version, "Version of the files; else the latest when the run gets to them")
            .range(1, INT32_MAX);
        take.option("--configuration", m_configuration, "Configuration or sheet of the files");
        take.flag("--no-dialog", m_noDialog, "Ask nobody: fail if something is left to the user");
        take.flag("--defaults", m_defaults, "Show no dialog: take what it would show first, and say what that is");
        take.flag("--anyway", m_anyway, "Launch it although it can't go well");
        take.flag("--only-changed", m_onlyChanged,
            "Leave out files whose version, task, macro, CAD application and references are those of their last "
            "outputs");
        take.flag("--wait", m_wait, "Carry the run out here and wait for its end");
    }

    int run(Session& session) override
    {
        const auto task = TaskStore(session.store().database(), session.vault().info().id).get(zn::toText(m_name));
        zn::ArkSelection selection;
        for (const auto& path : m_paths)
            selection.push_back(launchItem(session, path, m_version, zn::toText(m_configuration), !m_anyway));
        auto& desktop = session.desktop(!m_noDialog && !m_defaults);
        LaunchFlow flow(session.taskHost(), task, std::move(selection));
        flow.launchOnlyChanged(m_onlyChanged);
        if (m_anyway)
            flow.launchAnyway();
        const auto launched = orAnyway([&] { return launch(desktop, flow); });
        if (m_wait) {
            if (!session.json())
                std::cout << launched.id << std::endl;
            return runOrWatch(session, launched.id);
        }
        if (session.json())
            printJson(toJson(session, launched));
        else
            std::cout << launched.id << "\n";
        return commandDone;
    }

private:
    RunInfo launch(Desktop& desktop, LaunchFlow& flow) const
    {
        if (m_defaults) {
            std::string taken;
            auto launched = desktop.launchWithDefaults(flow, taken);
            printNote(taken);
            return launched;
        }
        auto launched = asked(desktop, flow);
        if (!launched)
            throw zn::StatusError(zn::E_ABORT, "The launch was given up; no run was made.");
        return std::move(*launched);
    }

    /// Where nobody can be asked, the sentence says how to go on without.
    std::optional<RunInfo> asked(Desktop& desktop, LaunchFlow& flow) const
    {
        try {
            return desktop.launchTask(flow);
        } catch (const zn::StatusError& error) {
            if (error.status() != zn::E_ABORT || desktop.canAsk() || m_paths.empty())
                throw;
            throw zn::StatusError(zn::E_ABORT,
                std::string(error.what())
                    + " Or launch it with --defaults, which takes what the dialog would show first.");
        }
    }

    std::string m_name;
    std::vector<std::string> m_paths;
    std::int32_t m_version = 0;
    std::string m_configuration;
    bool m_noDialog = false;
    bool m_defaults = false;
    bool m_anyway = false;
    bool m_onlyChanged = false;
    bool m_wait = false;
};

} // namespace

MadeCommand taskLaunchCommand() { return std::make_unique<TaskLaunch>(); }

} // namespace zn::arkin
