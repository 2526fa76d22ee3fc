#pragma once

#include "arkin/tasks/LaunchInstance.h"
#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/TaskHost.h"
#include "contracts/host/ArkAddIn.h"

namespace zn::arkin {

/// What the add-in's preparation of a launch has led to.
enum class LaunchStep {
    Ready,   ///< nothing is left open: `enqueue`
    Page,    ///< a page asks the user: show it, then `accept` and `enqueue`
    Stopped, ///< the user, or the add-in, wants no run
};

/// One launch of a task, from the command that settles selection and settings to the run in the queue. It knows no
/// toolkit: windows are handles. Nothing is stored before `enqueue`. All failures are `StatusError`s with a sentence.
class LaunchFlow {
public:
    /// Loads the task's add-in.
    LaunchFlow(TaskHost host, TaskDefinition task, zn::ArkSelection selection);
    LaunchFlow(const LaunchFlow&) = delete;
    LaunchFlow& operator=(const LaunchFlow&) = delete;
    ~LaunchFlow();

    /// `parentWindow` owns the dialogs that the add-in shows; 0 means that nobody can be asked. `attended` false:
    /// nobody sees them, and what they would show first is taken. Once.
    LaunchStep prepare(std::int32_t parentWindow, bool attended = true);
    /// After `Page` the page's title, after `Stopped` the add-in's reason, if it gave one.
    const zn::Text& text() const { return m_text; }
    /// What the add-in would have told a person since the launch began, and what it took in his stead; empty where one
    /// was there.
    const zn::Text& unspoken() const { return m_unspoken; }
    /// The page's handle, after `Page`.
    std::int32_t pageWindow() const { return m_pageWindow; }
    const TaskDefinition& task() const { return m_task; }

    /// Lets the page write its values to the run. False if it refuses them; it has told the user why.
    bool accept();
    /// From now on `enqueue` queues a run that can't go well, too; see LaunchCheck.h.
    void launchAnyway() { m_anyway = true; }
    /// The run leaves out files that an earlier run of the task has done already; see UnchangedFiles.h.
    void launchOnlyChanged(bool onlyChanged = true) { m_onlyChanged = onlyChanged; }
    /// What `enqueue` writes in the run's own transaction, see `NewRun::alongside`.
    void writeAlongside(std::function<void(std::int32_t)> write) { m_alongside = std::move(write); }
    /// Puts the run into the queue. Raises `CannotRun` if it can be told that it can't go well.
    RunInfo enqueue();

    /// Lets the add-in go, with the pages that it owns: before their parent window is destroyed. Nothing but
    /// `enqueue` may follow.
    void close();

private:
    zn::Status send(zn::TaskCommand command, zn::ArkCmd& cmd);

    TaskHost m_host;
    TaskDefinition m_task;
    zn::ArkSelection m_selection;
    zn::Text m_guid;
    std::shared_ptr<zn::IArkAddIn5> m_addIn;
    std::shared_ptr<LaunchInstance> m_instance;
    std::int32_t m_window = 0;
    bool m_attended = false;
    bool m_anyway = false;
    bool m_onlyChanged = false;
    std::int32_t m_pageWindow = 0;
    zn::Text m_text;
    zn::Text m_unspoken;
    std::function<void(std::int32_t)> m_alongside;
};

} // namespace zn::arkin
