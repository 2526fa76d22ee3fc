#pragma once

#include "addin/flows/ZNTaskAddIn.h"

#include <map>

namespace zn {

/// What a run says to people about single files, beyond its state and its text: in its log, if the task keeps one, and
/// with the run itself, if the host takes messages. Nothing here raises: a run doesn't fail for what it can't say.
class RunMessages {
public:
    /// The objects outlive this one.
    RunMessages(
        MacroBuilder& log, const std::shared_ptr<IArkVault>& vault, const std::shared_ptr<IArkTaskInstance>& instance);

    /// From now on the log is this run's.
    void openLog() { m_logIsOpen = true; }
    bool logIsOpen() const { return m_logIsOpen; }

    /// A sentence about the file at `path`, which may be empty, to both places.
    void tell(const Text& path, const Text& sentence);
    /// The same for what stands in the log already.
    void tellWithRun(const Text& path, const Text& sentence);
    void tellOutputs(const OutputTally& outputs);
    /// With the last sentence that was told of the output, or else of its source: the CAD application's own words come
    /// behind what the macro has logged.
    void tellResults(std::vector<ArkFileResult> results);

    /// Results of files that aren't worked on; `tellResults` tells them, too.
    void keepResult(ArkFileResult result) { m_kept.push_back(std::move(result)); }

    /// With what the run does its work, and the macro that comes next, for those who ask later.
    bool keepsAudit() const { return m_audit != nullptr; }
    void tellApplication(const ArkApplication& application);
    void tellMacro(const OutputRecord& record, const Text& macro);

    /// The sentence of the failure now being handled: its own, or else what the host knows of its status. To be called
    /// inside a `catch` block, before anything else is asked of the host.
    Text currentSentence() const;

private:
    MacroBuilder& m_log;
    std::shared_ptr<IArkVault> m_vault;
    std::shared_ptr<IArkRunMessages> m_run;    ///< null where the host takes none
    std::shared_ptr<IArkRunResults> m_results; ///< likewise
    std::shared_ptr<IArkRunAudit> m_audit;     ///< likewise
    std::map<Text, Text> m_sentences;          ///< by folded path
    std::vector<ArkFileResult> m_kept;
    bool m_logIsOpen = false;
};

} // namespace zn
