#pragma once

#include "base/Text.h"

#include <cstdint>
#include <optional>

namespace zn {

/// The exit code that stands for a process that still runs.
inline constexpr std::uint32_t stillActive = 259;

struct FileVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
};

/// This process's own id.
std::int32_t currentProcessId();

/// The machine's processes.
class Processes {
public:
    virtual ~Processes() = default;

    /// Starts a program by its command line and returns its process id; none if it can't be started. The program's
    /// path needs no quotes: the shortest beginning of the line that ends before a blank and names a file is taken.
    /// A path in quotes is taken as it stands.
    /// `showState` is the number of the main window's first state (6 minimised). The child inherits the environment
    /// and none of the open files but standard error, and is killed when this process dies by any means.
    virtual std::optional<std::int32_t> launch(TextView commandLine, int showState) = 0;
    /// Whether the process can be opened: it runs.
    virtual bool open(std::int32_t processId) = 0;
    /// 259 while it runs; none if nothing is known of the process. A process that was launched here keeps its exit code
    /// after its end: its own, what `terminate` gave it, or 128 and the signal's number.
    virtual std::optional<std::uint32_t> exitCode(std::int32_t processId) = 0;
    /// Ends a process that was launched here at once, with the processes that it started; its exit code is then
    /// `exitCode`. False if there is no such process.
    virtual bool terminate(std::int32_t processId, std::uint32_t exitCode) = 0;
    /// Bytes of memory in use.
    virtual std::optional<std::uint64_t> workingSet(std::int32_t processId) = 0;
    /// The version block of an executable.
    virtual std::optional<FileVersion> fileVersion(TextView path) = 0;
};

} // namespace zn
