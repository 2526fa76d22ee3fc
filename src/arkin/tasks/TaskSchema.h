#pragma once

#include "arkin/store/Schema.h"

namespace zn::arkin {

/// Tables of the tasks: definitions with their variables and menu entries, runs with theirs, results.
extern const SchemaArea taskSchema;

} // namespace zn::arkin
