#pragma once

#include "base/Text.h"

#include <cstdint>

namespace zn::arkin {

/// One process of one machine. `start` is the moment of its start as the kernel counts it, so that a later process
/// that was given the same number isn't taken for it.
struct ProcessMark {
    zn::Text host;
    std::int32_t process = 0;
    std::int64_t start = 0;
    bool operator==(const ProcessMark&) const = default;
};

ProcessMark thisProcess();
/// Another process of this machine.
ProcessMark markOf(std::int32_t process);
/// The process runs on this machine.
bool isHere(const ProcessMark& mark);
/// Whether the process lives. Of a process on another host nothing is known: true.
bool mayBeAlive(const ProcessMark& mark);

} // namespace zn::arkin
