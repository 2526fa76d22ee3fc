#pragma once

#include "arkin/vault/VaultDesktop.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace zn::arkin {

class LaunchFlow;
class TaskDetails;
class TaskSetup;
struct RunInfo;
struct TaskHost;

/// The vault host's windows. They live in a library of their own, which the program loads when it first needs one, so
/// that a worker loads no toolkit before it has to launch a schedule; this header is all that the program sees of it.
/// One desktop a process, on the thread that made it. Failures are `StatusError`s with a sentence.
class Desktop : public VaultDesktop {
public:
    /// Whether a person can be asked. If not, windows are made where nobody sees them, and no dialog opens.
    virtual bool canAsk() const = 0;
    /// Raises a sentence that tells why nobody can be asked, unless somebody can.
    virtual void requireDisplay() const = 0;

    /// Shows the task's property dialog until it is accepted or given up. Whether the task was changed.
    virtual bool editTask(TaskSetup& setup) = 0;
    /// Runs the same without showing anything, as if the pages were accepted unseen; what they wrote is in
    /// `setup.task()`. Raises what a page would have told.
    virtual void fillTask(TaskSetup& setup) = 0;
    /// Launches a task: shows what the add-in leaves to the user. None when the user wants no run. Where nobody can be
    /// asked, a launch that would have to raises a sentence that says what it is about.
    virtual std::optional<RunInfo> launchTask(LaunchFlow& launch) = 0;
    /// Launches a task and shows nothing: takes what its dialogs would show first. `taken` says what that was, in
    /// sentences. Raises what a dialog would have told.
    virtual RunInfo launchWithDefaults(LaunchFlow& launch, std::string& taken) = 0;
    /// Shows the add-in's page about a run until it is closed.
    virtual void showDetails(TaskDetails& details) = 0;
    /// Shows the window of the opened vault until it is closed. It begins in the folder; 0 for that of the last time.
    /// Pictures of files are kept in the home's `cacheFolder`.
    virtual void showExplorer(const TaskHost& tasks, std::int32_t folderId, const std::filesystem::path& cacheFolder)
        = 0;
    /// Shows the runs of the opened vault until the window is closed. It begins with the run; 0 for none.
    virtual void showMonitor(const TaskHost& tasks, std::int32_t runId, const std::filesystem::path& cacheFolder) = 0;
};

/// What a desktop is made with.
struct DesktopSetting {
    bool wanted = true;                 ///< false: a desktop that asks nobody, whatever display there is
    std::string language;               ///< such as "DE"; empty for English
    std::filesystem::path stringFolder; ///< where the string files of the languages lie
};

/// Name and type of the library's one export. The caller owns the object, and never unloads the library: the toolkit
/// keeps references into it.
using MakeDesktopFunction = Desktop* (*)(const DesktopSetting& setting);
inline constexpr const char* makeDesktopName = "makeDesktop";
inline constexpr const char* desktopLibraryName = "libarkin-desktop.so";

} // namespace zn::arkin
