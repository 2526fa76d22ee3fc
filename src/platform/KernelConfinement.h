#pragma once

#include <filesystem>
#include <functional>
#include <vector>

namespace zn {

/// The version of the kernel's own confinement of file access (Landlock); 0 where it has none, or doesn't let it be
/// used.
int kernelConfinementVersion();

/// From now on, and never otherwise again, this thread and the processes that it starts make, write, rename and remove
/// nothing but below `folders` (or write what is a single file among them), and start no program. They read what they
/// could read before; files that are open stay so. A folder that doesn't exist is left out.
/// False if the kernel doesn't confine.
bool confineWritesOfThisThread(const std::vector<std::filesystem::path>& folders);

/// Runs `work` on a thread of its own that is confined so, and returns at its end. Exceptions of `work` are passed on.
/// False if the kernel doesn't confine: the work is done all the same, on the caller's thread.
bool runWithWritesConfined(const std::vector<std::filesystem::path>& folders, const std::function<void()>& work);

} // namespace zn
