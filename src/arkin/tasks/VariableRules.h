#pragma once

#include "arkin/tasks/TaskFile.h"
#include "arkin/tasks/TaskHost.h"
#include "contracts/host/ArkAddIn.h"

namespace zn::arkin {

/// What an add-in tells of its tasks' variables, for those who write them without its pages. The host knows neither
/// their types nor what follows from what.
class VariableRules {
public:
    /// Loads the add-in. All failures are `StatusError`s with a sentence.
    VariableRules(TaskHost host, const zn::Text& addIn);

    /// None from an add-in that doesn't tell.
    const KnownVariables& known() const { return m_known; }
    /// After variables of a task were written: raises what the add-in refuses, and brings the variables that follow
    /// from others up to date.
    void settle(TaskDefinition& task) const;

private:
    TaskHost m_host;
    std::shared_ptr<zn::IArkTaskVariables> m_rules;
    KnownVariables m_known;
};

} // namespace zn::arkin
