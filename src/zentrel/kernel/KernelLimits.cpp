#include "zentrel/kernel/KernelLimits.h"

#include "zentrel/kernel/KernelChild.h"

namespace zn::zentrel {

namespace {

KernelLimits currentLimits;
bool kernelProcess = false;

} // namespace

void setKernelLimits(KernelLimits limits) { currentLimits = std::move(limits); }

const KernelLimits& kernelLimits() { return currentLimits; }

void becomeKernelProcess() { kernelProcess = true; }

bool isKernelProcess() { return kernelProcess; }

std::chrono::seconds computingLimit(std::size_t pieces)
{
    const auto shareOfPiece = std::chrono::milliseconds(currentLimits.computing) / 60;
    return currentLimits.computing + std::chrono::ceil<std::chrono::seconds>(pieces * shareOfPiece);
}

} // namespace zn::zentrel
