#pragma once

#include "arkin/tasks/TaskHost.h"
#include "arkin/tasks/TaskProperties.h"
#include "contracts/host/ArkAddIn.h"

namespace zn::arkin {

/// One opening of a task's properties, from the command that builds the pages to the change in the database. It knows
/// no toolkit: windows are handles, and whoever has none to show gives the handle of one that stays hidden.
/// All failures are `StatusError`s with a sentence.
class TaskSetup {
public:
    /// Loads the task's add-in. The task may be one that isn't in the database yet.
    TaskSetup(TaskHost host, TaskDefinition task);
    TaskSetup(const TaskSetup&) = delete;
    TaskSetup& operator=(const TaskSetup&) = delete;
    ~TaskSetup();

    /// Lets the add-in build its pages as children of the window. Once. `attended` is whether a person sees them.
    void open(std::int32_t parentWindow, bool attended = true);
    /// Valid until `close`.
    const std::vector<zn::ArkTaskPage>& pages() const { return m_properties->pages(); }

    /// Lets the pages write their values. The title of the page that refuses its own; none when all have written.
    std::optional<zn::Text> accept();
    /// What the pages would have told a person who sees them, since the last call.
    zn::Text takeUnspoken();
    /// Tells the add-in that its pages were given up.
    void cancel();

    /// As it is with all that the pages wrote.
    const TaskDefinition& task() const { return m_properties->task(); }
    /// What the host itself keeps of the task, for `store`.
    void setHostSettings(const HostSettings& settings);
    /// Puts what was written into the database, all or nothing. If somebody else has changed the task since it was
    /// read, nothing is written and that change is returned, unless `replaceOthers`.
    std::optional<TaskConflict> store(bool replaceOthers);

    /// Lets the add-in go, with the pages that it owns: before their parent window is destroyed. Nothing but `task`
    /// and `store` may follow.
    void close();

private:
    /// Raises a failure; `what` is what doesn't work then.
    void send(zn::TaskCommand command, zn::ArkCmd& cmd, const char* what);

    TaskHost m_host;
    std::shared_ptr<zn::IArkAddIn5> m_addIn;
    std::shared_ptr<TaskProperties> m_properties;
    std::int32_t m_window = 0;
    bool m_attended = true;
    std::optional<HostSettings> m_hostSettings; ///< if they are other ones than the task's
    zn::Text m_unspoken;
};

} // namespace zn::arkin
