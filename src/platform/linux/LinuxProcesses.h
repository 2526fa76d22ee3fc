#pragma once

#include "platform/Processes.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zn {

class FileSystem;

/// The machine's processes. A launched process has a process group of its own, so that a terminal's Ctrl+C reaches this
/// program first, and a guard between it and this process, who ends what it leaves behind. It dies with this object at
/// the latest. Safe for use from several threads.
///
/// A show state has no counterpart in a child's start here; a program that opens windows reads it from the
/// environment variable ZN_SHOW_STATE.
class LinuxProcesses : public Processes {
public:
    /// `files` resolves the programs' paths and outlives this object.
    explicit LinuxProcesses(FileSystem& files);
    ~LinuxProcesses() override;

    std::optional<std::int32_t> launch(TextView commandLine, int showState) override;
    bool open(std::int32_t processId) override;
    std::optional<std::uint32_t> exitCode(std::int32_t processId) override;
    bool terminate(std::int32_t processId, std::uint32_t exitCode) override;
    std::optional<std::uint64_t> workingSet(std::int32_t processId) override;
    std::optional<FileVersion> fileVersion(TextView path) override;

private:
    struct Child {
        /// The process that stands for it here; its end is the program's.
        pid_t guard = 0;
        /// What `terminate` asked for, if it was called.
        std::optional<std::uint32_t> asked;
        std::optional<std::uint32_t> ended;
    };
    class Launcher;

    /// The program and its arguments; empty if no beginning of the line names a file.
    std::vector<std::string> programAndArguments(TextView commandLine);
    /// Null for a process that was not launched here. Takes the end of the child if it came meanwhile.
    Child* refreshed(std::int32_t processId);

    FileSystem& m_files;
    std::mutex m_mutex;
    std::map<std::int32_t, Child> m_children;
    std::unique_ptr<Launcher> m_launcher;
};

} // namespace zn
