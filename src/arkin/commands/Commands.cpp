#include "arkin/commands/Commands.h"

#include "arkin/commands/Factories.h"

namespace zn::arkin {

namespace {

const GroupRow groups[] = {
    {"vault", "The vault itself"},
    {"variable", "Card variables of the vault"},
    {"user", "Users of the vault"},
    {"right", "Rights of users on folders"},
    {"task", "Tasks and their runs"},
    {"registry", "Settings of this machine"},
    {"addin", "Add-in libraries"},
    {"cache", "What was made of files and can be made again"},
};

const CommandRow commands[] = {
    {"", "quickstart", "Make a vault with all that it needs, and three tasks", quickstartCommand},
    {"", "report", "Show what runs did, file by file, such as last night's", reportCommand},
    {"", "version", "Show this program's version", versionCommand},
    {"vault", "create", "Make a vault with its local folder", vaultCreateCommand},
    {"vault", "check", "Verify every content, version, reference and count", vaultCheckCommand},
    {"vault", "repair", "Mend from a backup what the check finds", vaultRepairCommand},
    {"vault", "clean", "Set aside what interrupted work left in the archive", vaultCleanCommand},
    {"vault", "backup", "Back the vault up while it is in use", vaultBackupCommand},
    {"vault", "restore", "Bring a whole home back from a backup", vaultRestoreCommand},
    {"vault", "move", "Move the vault's local folder", vaultMoveCommand},
    {"vault", "relocate", "Let the vault begin anew in another local folder, such as a copied home's",
        vaultRelocateCommand},
    {"vault", "remove", "Remove a vault with all that it has", vaultRemoveCommand},
    {"vault", "info", "Show where the vault and its parts are", vaultInfoCommand},
    {"vault", "refresh", "Read again what the latest versions of all documents say of themselves", vaultRefreshCommand},
    {"", "add", "Copy files or folders into the vault and check them in", addCommand},
    {"", "explorer", "Open the window of the vault", explorerCommand},
    {"", "monitor", "Open the window of the runs", monitorCommand},
    {"", "ls", "List a folder of the vault", listCommand},
    {"", "find", "Find files by name, card, state, size and time", findCommand},
    {"", "status", "Show what is checked out, and local copies that aren't the latest version", statusCommand},
    {"", "history", "List the versions of a file", historyCommand},
    {"", "diff", "Show in what two versions of a file differ", diffCommand},
    {"", "references", "List what a file refers to and what refers to it", referencesCommand},
    {"", "get", "Bring a file to the local folder", getCommand},
    {"", "checkout", "Take files for writing", checkOutCommand},
    {"", "checkin", "Make new versions of the local copies", checkInCommand},
    {"", "undo", "Give check-outs up", undoCommand},
    {"", "mv", "Move files and folders of the vault", moveCommand},
    {"", "rename", "Give a file or folder another name", renameCommand},
    {"", "delete", "Remove files from their folders; their versions stay", deleteCommand},
    {"", "rm", "The same as delete", deleteCommand},
    {"", "restore", "Bring a deleted file back, or make an older version the newest", restoreCommand},
    {"user", "list", "List who has worked with the vault, when, and what they have", userListCommand},
    {"right", "list", "List what users may do in which folders", rightListCommand},
    {"right", "set", "Say what a user may do in a folder and below it", rightSetCommand},
    {"variable", "add", "Add card variables", variableAddCommand},
    {"variable", "list", "List the card variables", variableListCommand},
    {"", "card", "Show or write the values of a file's card", cardCommand},
    {"task", "create", "Make a task", taskCreateCommand},
    {"task", "list", "List the tasks", taskListCommand},
    {"task", "show", "Show a task with its variables", taskShowCommand},
    {"task", "set", "Change variables of a task", taskSetCommand},
    {"task", "edit", "Show the property pages of a task", taskEditCommand},
    {"task", "delete", "Delete a task; its runs stay", taskDeleteCommand},
    {"task", "launch", "Put a run of a task on files or folders into the queue", taskLaunchCommand},
    {"task", "try", "Run a task for one file on a copy, and show its macro, log and outputs", taskTryCommand},
    {"task", "again", "Do a run again, as it was or as its task is now", taskAgainCommand},
    {"task", "schedule", "Launch a task by itself at a time of the day", taskScheduleCommand},
    {"task", "schedules", "Show when tasks are launched by themselves, and what came of it", taskSchedulesCommand},
    {"task", "unschedule", "Remove a schedule", taskUnscheduleCommand},
    {"task", "run", "Carry out a run in this process", taskRunCommand},
    {"task", "status", "Show a run, or all of them", taskStatusCommand},
    {"task", "log", "Print the log of a run", taskLogCommand},
    {"task", "results", "Show what became of each file of a run", taskResultsCommand},
    {"task", "audit", "Show who launched a run, with what, and what did its work", taskAuditCommand},
    {"task", "details", "Show the files of a run in a window", taskDetailsCommand},
    {"task", "suspend", "Let a run wait before its next file", taskSuspendCommand},
    {"task", "resume", "Let a suspended run go on", taskResumeCommand},
    {"task", "cancel", "Stop a run before its next file", taskCancelCommand},
    {"task", "release", "Give up what a run that has ended left checked out", taskReleaseCommand},
    {"task", "runs", "Remove the records of old runs", taskRunsCommand},
    {"", "worker", "Carry out waiting runs, one after the other", workerCommand},
    {"", "workers", "Show the workers, start one here, or stop one", workersCommand},
    {"", "printers", "List the printers of this machine", printerListCommand},
    {"", "language", "Show or set the language of the windows", languageCommand},
    {"registry", "list", "List a key's sub-keys and values", registryListCommand},
    {"registry", "get", "Print a value", registryGetCommand},
    {"registry", "set", "Write a value", registrySetCommand},
    {"registry", "delete", "Delete a value, or a key with all below it", registryDeleteCommand},
    {"addin", "register", "Register an add-in's library", addInRegisterCommand},
    {"addin", "unregister", "Take an add-in's library out of the registry", addInUnregisterCommand},
    {"addin", "list", "List the registered add-ins", addInListCommand},
    {"cache", "show", "Show where the cache is, what it holds and how much it may", cacheShowCommand},
    {"cache", "clear", "Empty the cache, which costs nothing but time", cacheClearCommand},
};

} // namespace

std::span<const GroupRow> groupRows() { return groups; }
std::span<const CommandRow> commandRows() { return commands; }

} // namespace zn::arkin
