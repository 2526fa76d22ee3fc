#include "arkin/desktop/HostDesktop.h"

#include "arkin/desktop/Application.h"
#include "arkin/desktop/BrowseDialog.h"
#include "arkin/desktop/DetailsWindow.h"
#include "arkin/desktop/explorer/ExplorerWindow.h"
#include "arkin/desktop/frame/Texts.h"
#include "arkin/desktop/LaunchDialog.h"
#include "arkin/desktop/monitor/MonitorWindow.h"
#include "arkin/desktop/OpenQuestions.h"
#include "arkin/desktop/PropertyDialog.h"
#include "arkin/desktop/UnseenDialogs.h"
#include "arkin/tasks/Launch.h"
#include "arkin/tasks/LaunchFlow.h"
#include "arkin/tasks/TaskDetails.h"
#include "arkin/tasks/TaskSetup.h"

#include <QApplication>
#include <QEventLoop>

namespace zn::arkin {

namespace {

/// What an add-in told nobody, by its own account and in dialogs that opened all the same.
std::string told(const zn::Text& unspoken, UnseenDialogs& unseen) { return zn::toUtf8(unspoken) + unseen.take(); }

DailyHost dailyHost(Desktop& desktop, const TaskHost& tasks, const std::filesystem::path& cacheFolder)
{
    return {tasks, cacheFolder,
        [&desktop, tasks](const TaskDefinition& task, zn::ArkSelection selection) {
            LaunchFlow flow(tasks, task, std::move(selection));
            return desktop.launchTask(flow);
        },
        [&desktop, tasks](std::int32_t runId) {
            TaskDetails details(tasks, runId);
            desktop.showDetails(details);
        }};
}

template <class Window> void untilClosed(Window& window)
{
    QEventLoop loop;
    window.whenClosed = [&] { loop.quit(); };
    window.show();
    loop.exec();
}

} // namespace

HostDesktop::HostDesktop(const Display& display, bool wanted, const Language& language)
    : m_problem(wanted ? display.problem : "No dialog is wanted.")
    , m_canAsk(m_problem.empty())
    , m_application(QCoreApplication::instance()
              ? nullptr
              : std::make_unique<Application>(m_canAsk ? display.platform : "offscreen"))
    , m_translation(language)
{
    QCoreApplication::installTranslator(&m_translation);
}

HostDesktop::~HostDesktop() = default;

void HostDesktop::requireDisplay() const
{
    if (!m_canAsk)
        throw zn::StatusError(zn::E_ARK_NO_DESKTOP, m_problem + " Windows need a desktop session, or 'ssh -X'.");
}

bool HostDesktop::editTask(TaskSetup& setup) { return PropertyDialog(setup).exec() == QDialog::Accepted; }

void HostDesktop::fillTask(TaskSetup& setup)
{
    UnseenDialogs unseen;
    QWidget owner;
    try {
        setup.open(zn::handleOf(owner), false);
        const auto refusing = setup.accept();
        const auto sentences = told(setup.takeUnspoken(), unseen);
        if (refusing)
            throw zn::StatusError(zn::E_ABORT,
                "The page '" + zn::toUtf8(*refusing) + "' doesn't accept what it starts with: "
                    + (sentences.empty() ? "it gives no reason." : sentences));
        if (!sentences.empty())
            throw zn::StatusError(zn::E_ABORT, sentences);
    } catch (...) {
        setup.close();
        throw;
    }
    setup.close();
}

std::optional<RunInfo> HostDesktop::launchTask(LaunchFlow& launch)
{
    if (m_canAsk) {
        LaunchDialog dialog(launch);
        return dialog.run() ? std::optional(launch.enqueue()) : std::nullopt;
    }
    UnseenDialogs unseen;
    const auto step = launch.prepare(0);
    const auto open = step == LaunchStep::Page ? openQuestions(zn::windowOf(launch.pageWindow())) : std::string();
    requireSettled(launch, step, open);
    if (const auto sentences = told(launch.unspoken(), unseen); !sentences.empty())
        throw zn::StatusError(zn::E_ABORT, sentences);
    launch.close();
    return launch.enqueue();
}

RunInfo HostDesktop::launchWithDefaults(LaunchFlow& launch, std::string& taken)
{
    UnseenDialogs unseen;
    QWidget owner;
    try {
        const auto step = launch.prepare(zn::handleOf(owner), false);
        const bool accepted = step != LaunchStep::Page || launch.accept();
        taken = zn::toUtf8(launch.unspoken());
        const auto said = unseen.take();
        if (step == LaunchStep::Stopped)
            requireSettled(launch, step, {});
        if (!accepted || !said.empty())
            throw zn::StatusError(zn::E_ABORT,
                "The task '" + zn::toUtf8(launch.task().name) + "' wasn't launched: "
                    + (said.empty() && taken.empty() ? "its dialog doesn't accept what it shows first."
                                                     : taken + said));
    } catch (...) {
        launch.close();
        throw;
    }
    launch.close();
    return launch.enqueue();
}

void HostDesktop::showDetails(TaskDetails& details) { DetailsWindow(details).exec(); }

void HostDesktop::showExplorer(const TaskHost& tasks, std::int32_t folderId, const std::filesystem::path& cacheFolder)
{
    const DailyHost host = dailyHost(*this, tasks, cacheFolder);
    ExplorerWindow window(host, folderId);
    untilClosed(window);
}

void HostDesktop::showMonitor(const TaskHost& tasks, std::int32_t runId, const std::filesystem::path& cacheFolder)
{
    const DailyHost host = dailyHost(*this, tasks, cacheFolder);
    MonitorWindow window(host);
    if (runId != 0)
        window.choose(runId);
    untilClosed(window);
}

std::vector<zn::Text> HostDesktop::pickFiles(
    zn::IArkVault& vault, std::int32_t window, bool several, zn::TextView title, zn::TextView filter)
{
    BrowseDialog dialog(vault, shown(title), parseFilters(filter), several, zn::windowOf(window));
    return dialog.exec() == QDialog::Accepted ? dialog.paths() : std::vector<zn::Text>();
}

std::shared_ptr<zn::IArkFolder> HostDesktop::pickFolder(zn::IArkVault& vault, std::int32_t window, zn::TextView title)
{
    BrowseDialog dialog(vault, shown(title), zn::windowOf(window));
    return dialog.exec() == QDialog::Accepted ? dialog.folder() : nullptr;
}

} // namespace zn::arkin
