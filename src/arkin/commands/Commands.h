#pragma once

#include "arkin/commands/frame/Command.h"

#include <span>

namespace zn::arkin {

/// One row for each subcommand; `group` is empty for those that stand by themselves.
struct CommandRow {
    const char* group;
    const char* name;
    const char* help;
    CommandFactory make;
};

struct GroupRow {
    const char* name;
    const char* help;
};

std::span<const GroupRow> groupRows();
std::span<const CommandRow> commandRows();

} // namespace zn::arkin
