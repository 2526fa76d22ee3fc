// What the subcommands of the vault host read; compiled once.
#pragma once

#include "cmake/precompiled/plain.h"

#include "arkin/commands/frame/Command.h"
#include "arkin/commands/frame/Output.h"
