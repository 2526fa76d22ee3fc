#pragma once

#include <chrono>
#include <cstddef>
#include <functional>

namespace zn::zentrel {

/// What all calls of the kernel keep to. Set by whoever puts the program together, before the first call.
struct KernelLimits {
    std::chrono::seconds computing{60}; ///< for a file of no measure; each piece of it adds a sixtieth
    /// Bytes that a child may take besides the program's own; 0 for half of what the machine has free when a child
    /// starts. A child's answer, which the program itself has to hold, is an eighth of it at most.
    std::size_t memory = 0;
    /// Whether the program's user has gone, so that nobody waits for a result. May be empty.
    std::function<bool()> userGone = {};
};

void setKernelLimits(KernelLimits limits);
const KernelLimits& kernelLimits();

/// What the machine has free, in bytes.
std::size_t freeMemory();

/// From now on, this process is one that the kernel may take with it: `askKernel` makes its calls right here. For
/// programs that do nothing else, and for fuzz targets.
void becomeKernelProcess();
bool isKernelProcess();

} // namespace zn::zentrel
