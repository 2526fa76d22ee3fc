#pragma once

#include <sys/types.h>

namespace zn {

// A process that stands between this one and a program that it started. What the program leaves behind becomes the
// guard's child, whatever process group or session it has gone to, so that the guard can end it. Both run in a forked
// copy of a process with several threads and make only such calls as are allowed there.

/// Makes the calling process a guard: it inherits orphans, gets SIGTERM when the thread that forked it ends, and keeps
/// its signals for `guardProgram`. False if that can't be had, or if `parent` has gone already.
bool prepareGuard(pid_t parent);

/// Waits until the program ends or SIGTERM comes, ends all that it has started, and ends: with the program's exit code
/// or 128 and its signal's number, after SIGTERM by SIGKILL.
[[noreturn]] void guardProgram(pid_t program);

} // namespace zn
