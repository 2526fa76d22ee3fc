#pragma once

#include "addin/flows/RunMessages.h"

namespace zn {

/// The code of a run whose steps are all taken, whatever happened before: its first failure stays.
class RunResult {
public:
    explicit RunResult(Status code = S_OK)
        : m_code(code)
    {
    }
    /// Takes a step's status, which counts if it is the first failure.
    void keep(Status status)
    {
        if (failed(status) && !failed(m_code))
            m_code = status;
    }
    /// Runs a step and keeps what it raises.
    template <class Step> void step(const Step& step)
    {
        try {
            step();
        } catch (...) {
            keep(currentExceptionStatus());
        }
    }
    Status code() const { return m_code; }

private:
    Status m_code;
};

/// After the CAD session has stopped: adds what came out to the vault, writes the lists back and commits the log.
/// What went wrong with single files is told by `messages`.
void closeRun(TaskContext& context, const std::shared_ptr<IArkVault>& vault,
    const std::shared_ptr<IArkTaskInstance>& instance, RunResult& result, std::int32_t total,
    const SelectionRecords& items, const Text& logPath, RunMessages& messages);

/// Tells the host the run's final state, its text and the documents that it touched. `code` is the run's result.
/// Returns 1 if the run was cancelled, whose state the host finishes itself, else `code`. Raises a failure of telling.
Status reportRun(TaskContext& context, IArkTaskInstance& instance, Status code, const SelectionRecords& items);

} // namespace zn
