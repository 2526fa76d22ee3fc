#pragma once

#include "arkin/tasks/RunStore.h"
#include "arkin/tasks/TaskHost.h"
#include "contracts/host/ArkAddIn.h"

namespace zn::arkin {

/// A look at one run through its add-in's page. It knows no toolkit: windows are handles. All failures are
/// `StatusError`s with a sentence.
class TaskDetails {
public:
    /// Raises E_INVALIDARG if there is no such run.
    TaskDetails(TaskHost host, std::int32_t runId);
    TaskDetails(const TaskDetails&) = delete;
    TaskDetails& operator=(const TaskDetails&) = delete;
    ~TaskDetails();

    const RunInfo& run() const { return m_run; }
    /// What the run says about its files, as the database has it now.
    std::vector<RunMessage> messages() { return m_runs.messages(m_run.id); }
    /// Lets the add-in build its page about the run as it stands now, as a child of the window. A page that was
    /// opened before is destroyed.
    zn::ArkTaskPage open(std::int32_t parentWindow);
    /// Lets the add-in go, with its page: before the parent window is destroyed.
    void close();

private:
    TaskHost m_host;
    RunStore m_runs;
    RunInfo m_run;
    std::shared_ptr<zn::IArkAddIn5> m_addIn;
};

} // namespace zn::arkin
