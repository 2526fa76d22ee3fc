#include "zentrel/kernel/KernelLimits.h"

#include "zentrel/kernel/KernelChild.h"

#include <fstream>
#include <string>
#include <unistd.h>

namespace zn::zentrel {

namespace {

KernelLimits currentLimits;
bool kernelProcess = false;

} // namespace

void setKernelLimits(KernelLimits limits) { currentLimits = std::move(limits); }

const KernelLimits& kernelLimits() { return currentLimits; }

void becomeKernelProcess() { kernelProcess = true; }

bool isKernelProcess() { return kernelProcess; }

std::size_t freeMemory()
{
    std::ifstream facts("/proc/meminfo");
    std::string name;
    std::size_t kilobytes = 0;
    for (std::string rest; facts >> name >> kilobytes; std::getline(facts, rest))
        if (name == "MemAvailable:")
            return kilobytes * 1024;
    return static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

std::chrono::seconds computingLimit(std::size_t pieces)
{
    const auto shareOfPiece = std::chrono::milliseconds(currentLimits.computing) / 60;
    return currentLimits.computing + std::chrono::ceil<std::chrono::seconds>(pieces * shareOfPiece);
}

} // namespace zn::zentrel
