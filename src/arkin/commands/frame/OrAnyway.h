#pragma once

#include "arkin/tasks/LaunchCheck.h"

namespace zn::arkin {

/// Launches, and says how to launch all the same what can't go well.
template <class Launch> RunInfo orAnyway(const Launch& launch)
{
    try {
        return launch();
    } catch (const CannotRun& error) {
        throw CannotRun(error.status(), std::string(error.what()) + " Or launch it all the same with --anyway.");
    }
}

} // namespace zn::arkin
