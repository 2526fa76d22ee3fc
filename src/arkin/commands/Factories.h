#pragma once

#include "arkin/commands/frame/Command.h"

namespace zn::arkin {

using MadeCommand = std::unique_ptr<Command>;

// One function for each subcommand, in the file that bears its name.
MadeCommand quickstartCommand();
MadeCommand reportCommand();
MadeCommand versionCommand();
MadeCommand vaultCreateCommand();
MadeCommand vaultCheckCommand();
MadeCommand vaultCleanCommand();
MadeCommand vaultRepairCommand();
MadeCommand vaultBackupCommand();
MadeCommand vaultRestoreCommand();
MadeCommand vaultInfoCommand();
MadeCommand vaultMoveCommand();
MadeCommand vaultRelocateCommand();
MadeCommand vaultRemoveCommand();
MadeCommand vaultRefreshCommand();
MadeCommand addCommand();
MadeCommand listCommand();
MadeCommand explorerCommand();
MadeCommand monitorCommand();
MadeCommand findCommand();
MadeCommand statusCommand();
MadeCommand historyCommand();
MadeCommand diffCommand();
MadeCommand referencesCommand();
MadeCommand getCommand();
MadeCommand checkOutCommand();
MadeCommand checkInCommand();
MadeCommand undoCommand();
MadeCommand moveCommand();
MadeCommand renameCommand();
MadeCommand deleteCommand();
MadeCommand restoreCommand();
MadeCommand userListCommand();
MadeCommand rightListCommand();
MadeCommand rightSetCommand();
MadeCommand variableAddCommand();
MadeCommand variableListCommand();
MadeCommand cardCommand();
MadeCommand taskCreateCommand();
MadeCommand taskListCommand();
MadeCommand taskShowCommand();
MadeCommand taskSetCommand();
MadeCommand taskEditCommand();
MadeCommand taskDetailsCommand();
MadeCommand taskDeleteCommand();
MadeCommand taskLaunchCommand();
MadeCommand taskAgainCommand();
MadeCommand taskScheduleCommand();
MadeCommand taskSchedulesCommand();
MadeCommand taskUnscheduleCommand();
MadeCommand taskRunCommand();
MadeCommand taskStatusCommand();
MadeCommand taskTryCommand();
MadeCommand taskLogCommand();
MadeCommand taskResultsCommand();
MadeCommand taskAuditCommand();
MadeCommand taskSuspendCommand();
MadeCommand taskResumeCommand();
MadeCommand taskCancelCommand();
MadeCommand taskReleaseCommand();
MadeCommand taskRunsCommand();
MadeCommand workerCommand();
MadeCommand workersCommand();
MadeCommand printerListCommand();
MadeCommand languageCommand();
MadeCommand registryListCommand();
MadeCommand registryGetCommand();
MadeCommand registrySetCommand();
MadeCommand registryDeleteCommand();
MadeCommand addInRegisterCommand();
MadeCommand addInUnregisterCommand();
MadeCommand addInListCommand();
MadeCommand cacheShowCommand();
MadeCommand cacheClearCommand();

} // namespace zn::arkin
