#pragma once

#include "addin/macro/TokenTemplate.h"
#include "contracts/host/ArkTask.h"
#include "contracts/host/ArkVault.h"
#include "platform/Platform.h"

namespace zn {

/// Turns a macro template into the macro for one file. Set up once a run, told of each file, asked for each file's
/// text. It keeps the log of the run as well, since the macros write to the same file.
///
/// Placeholders, each resolved over the whole text as it stands at that moment:
///   by `Prepare`  {Name} {#123}   the host's second lookup, by name or number
///                 [Name]          a task variable, encoded for a quoted literal
///   by `Build`    <Filepath> <Path> <VaultPath> <TaskInstanceGuid> <SelCfgOrSheet> <Revision> <Version>
///                 <WorkflowState> <Today> <Supported_2017ZN> <Supported_2018ZN>, then
///                 %Name%          a card variable of the file, for each name in `UsedVariables`
/// A value is subject to all later steps and to no earlier one. <Filename>, <Extension> and <Configuration> pass
/// through: the macro replaces them itself.
///
/// Failures of the host are raised as `StatusError` with the host's status; a missing object is `E_POINTER`.
class MacroBuilder {
public:
    explicit MacroBuilder(const Platform& platform);

    /// Begins a run. A bracket in the template that is never closed is raised, after a line in the run's log that says
    /// which bracket in which line it is.
    void Prepare(
        std::shared_ptr<IArkVault> vault, std::shared_ptr<IArkTaskInstance> taskInstance, const Text& templateText);

    /// The file of the next `Build`, looked at in the folder `folderId`; its number `fileId` feeds no placeholder.
    /// `cfgOrSheet` is the configuration or sheet asked for, or empty. The file's revision and workflow state are asked
    /// for only if one of the run's output paths holds their token; otherwise these two placeholders are empty.
    void SetFile(
        TextView filePath, TextView cfgOrSheet, std::int32_t fileId, std::int32_t folderId, std::int32_t version);

    /// The macro for the current file. `appVersionText` holds the CAD application's year, such as "zn2018".
    Text Build(TextView appVersionText);

    /// The full path of the run's log: below the vault's root unless the task's `ErrorLogPath` is absolute.
    /// Empty if the task keeps no log.
    Text GetErrorLogPath();
    /// Writes at the end of the log, in the code page in which the macros write to it, and makes the log's folder if
    /// needed. A log that can't be written is no failure.
    void AppendToLog(TextView text);
    /// Writes `text` with the host's two texts for a status to the log; nothing if the host has none to give. Returns
    /// the host's sentence.
    Text LogHostError(Status code, TextView text);
    /// What the macros have written to the log since the last call, or since `Prepare`, without blanks around it. They
    /// keep one in the vault's root folder, too, for a task that has none.
    Text TakeMacroLog();

private:
    void resolveTaskPlaceholders(const Text& templateText);
    Text macroLogPath();
    std::uint64_t macroLogSize();
    void logOpenDelimiter(const Text& sentence);
    void readRunIdentity();
    void readOutputPaths();
    void readToday(TextView vaultName);
    void readRevisionAndState();
    std::shared_ptr<IArkFile> findFile();
    std::vector<std::optional<Text>> cardValues(const std::vector<Text>& names);
    Text variableText(TextView name);

    Platform m_platform;
    std::shared_ptr<IArkTaskInstance> m_taskInstance;
    std::shared_ptr<IArkVault> m_vault;
    Text m_filePath;
    Text m_cfgOrSheet;
    Text m_fileFolder;
    Text m_vaultRoot; ///< without trailing backslashes
    Text m_instanceGuid;
    Text m_macroText; ///< the template with the task's placeholders resolved
    std::int32_t m_folderId = 0;
    std::int32_t m_version = 0;
    Text m_revision;
    Text m_workflowState;
    Text m_today;
    /// Set by the first run whose output paths need them, and kept.
    bool m_needRevisionAndState = false;
    std::uint64_t m_logSeen = 0; ///< bytes of the log that aren't news
    /// `m_macroText` prepared for the per-file steps with the card variables of the last `Build`.
    TokenTemplate m_template;
};

} // namespace zn
