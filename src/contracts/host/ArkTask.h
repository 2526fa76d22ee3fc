#pragma once

#include "base/Object.h"
#include "contracts/host/Codes.h"
#include "contracts/host/Records.h"

#include <functional>
#include <vector>

namespace zn {

// The variables of a task that the host knows, too.
inline constexpr TextView kindVariable = u"__type";                   ///< a `TaskKind`
inline constexpr TextView scriptVariable = u"__script";               ///< the macro template
inline constexpr TextView selectionVariable = u"__selection_list";    ///< of a run: what was settled of its files
inline constexpr TextView menuDisplayVariable = u"__menucmd_display"; ///< whether the task stands in a file's menu

/// A task's definition, while an administrator sets it up.
class IArkTaskProperties : public Object {
public:
    /// 0 with the value; 1 and an empty value when there is no such variable; negative on failure.
    virtual Status GetValue(TextView name, Value& value) = 0;
    /// Creates or replaces the variable.
    virtual Status SetValue(TextView name, const Value& value) = 0;
    virtual Status GetTaskName(Text& name) = 0;
    /// Hands over the pages that the host's property dialog is to show, in this order.
    virtual Status SetSetupPages(const std::vector<ArkTaskPage>& pages) = 0;
    /// The task's entries in a file's menu; none for a task that has not been set up yet.
    virtual Status GetMenuCmds(std::vector<ArkMenuCmd>& entries) = 0;
    /// Replaces all entries.
    virtual Status SetMenuCmds(const std::vector<ArkMenuCmd>& entries) = 0;
    /// What the add-in takes over of the task's commands, a bit set.
    virtual Status SetTaskFlags(std::int32_t flags) = 0;
    /// A card variable that the task has declared, so that its runs may read it. The same statuses as `GetValue`.
    virtual Status GetVariable(std::int32_t variableId, Value& value) = 0;
    /// Declares a card variable with a value.
    virtual Status SetVariable(std::int32_t variableId, const Value& value) = 0;
};

/// One run of a task, at launch and on the worker. It sees the definition's variables;
/// what is written to it holds for this run only.
class IArkTaskInstance : public Object {
public:
    /// The run's identifier, "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}".
    virtual Status GetInstanceGuid(Text& guid) = 0;
    /// `total` steps, the bar at `position`, with a text beside it.
    virtual Status SetProgressRange(std::int32_t total, std::int32_t position, TextView text) = 0;
    virtual Status SetProgressPos(std::int32_t position, TextView text) = 0;
    virtual Status GetStatus(TaskRunState& state) = 0;
    /// Writes the run's state with its code, its text (empty stands for none) and the documents that it touched.
    virtual Status SetStatus(
        TaskRunState state, Status code, TextView text, const std::vector<ArkTaskResultDoc>& results)
        = 0;
    /// As on the definition.
    virtual Status GetValue(TextView name, Value& value) = 0;
    virtual Status SetValue(TextView name, const Value& value) = 0;
    virtual Status GetTaskName(Text& name) = 0;
    /// A second lookup, by name (text) or by number (integer): here the values of the run itself,
    /// such as its name and its user. The same statuses as `GetValue`.
    virtual Status GetVariable(const Value& idOrName, Value& value) = 0;
};

/// What a run's object may be, too: where an add-in tells people what became of single files, beyond the run's state
/// and text. It shows with the run, also for a task that keeps no log.
class IArkRunMessages {
public:
    virtual ~IArkRunMessages() = default;
    /// A sentence about the file at `path`; an empty path stands for the run as a whole.
    virtual Status AddMessage(TextView path, TextView sentence) = 0;
    /// How many outputs the run should have given, and how many of them didn't get where they belong.
    virtual Status SetOutputs(std::int32_t expected, std::int32_t missing) = 0;
};

/// What a run's object may be, too: where an add-in tells what became of each output.
class IArkRunResults {
public:
    virtual ~IArkRunResults() = default;
    /// Of the whole run; replaces what was told before.
    virtual Status SetFileResults(const std::vector<ArkFileResult>& results) = 0;
};

/// The CAD application that does a run's work, as it tells itself.
struct ArkApplication {
    Text name;
    Text version; ///< such as "26.0.0"
    Text build;   ///< of its releases and corrections, such as "zn2018 d180943"
};

/// The macro that a run carries out on one of its files.
struct ArkRunMacro {
    Text path; ///< local path of the file
    std::int32_t fileId = 0;
    std::int32_t version = 0;
    Text configuration; ///< configuration or sheet that was asked for; may be empty
    Text text;          ///< as it is handed to the CAD application
};

/// What a run's object may be, too: where an add-in tells with what it does the work, for those who ask later.
class IArkRunAudit {
public:
    virtual ~IArkRunAudit() = default;
    /// Once it is ready for the run's first file.
    virtual Status NoteApplication(const ArkApplication& application) = 0;
    /// Before it is carried out.
    virtual Status NoteMacro(const ArkRunMacro& macro) = 0;
};

/// A file that a run is about to work on.
struct ArkSourceFile {
    Text path; ///< local path
    std::int32_t fileId = 0;
    std::int32_t folderId = 0;
    std::int32_t version = 0;
    Text configuration; ///< configuration or sheet that was asked for; may be empty
};

/// What a run's object may be, too: a run that was launched for changed files only leaves out what an earlier run of
/// the same task has done already.
class IArkUnchangedFiles {
public:
    virtual ~IArkUnchangedFiles() = default;
    /// Once the CAD application is known (`IArkRunAudit::NoteApplication`). Gives a sentence for each file that is to
    /// be left out, and an empty one for each that is to be worked on; those of a run for all files are empty.
    virtual Status GetUnchanged(const std::vector<ArkSourceFile>& files, std::vector<Text>& sentences) = 0;
};

/// The names that outputs of a run will have: all paths that begin and end like this, without regard to case. An empty
/// ending says nothing of it.
struct ArkOutputNames {
    Text beginning;
    Text ending;
};

/// What a run's object may be, too: who writes which files. Two runs that would write the same file wait for each
/// other.
class IArkRunPaths {
public:
    virtual ~IArkRunPaths() = default;
    /// What the run is going to write, as far as that can be told before its files are fetched. It is the run's own
    /// from the fetch on.
    virtual Status AnnounceOutputs(const std::vector<ArkOutputNames>& names) = 0;
    /// Before the run writes the file at the path: returns once no other run writes it or works with it, and keeps it
    /// so until the run ends. Negative when that will not be; E_ABORT when the run is to end, because it was cancelled
    /// meanwhile or another worker has it.
    virtual Status ReserveOutput(TextView path) = 0;
};

/// What a run's object may be, too: how the host reaches work that goes on for long without asking for the run's state.
class IArkRunControl {
public:
    virtual ~IArkRunControl() = default;
    /// `stop` is called once, on a thread of the host's and at once if that has come already, when somebody wants the
    /// run's end; it must not wait. An empty one takes it back, and returns when no call is under way any more.
    virtual Status SetStopHandler(std::function<void()> stop) = 0;
    /// The longest time for the work on one file in seconds, 0 for none. A file that takes longer is given up, and the
    /// run goes on.
    virtual Status GetFileLimit(std::int32_t& seconds) = 0;
};

} // namespace zn
