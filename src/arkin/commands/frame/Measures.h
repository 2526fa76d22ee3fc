#pragma once

#include "arkin/commands/frame/Session.h"

#include <string>

namespace zn::arkin {

/// What the CAD application tells of a version of a model as JSON. Empty if nobody measures files of this kind. Raises
/// `StatusError` with a sentence when it fails.
std::string measuresOf(Session& session, const Place& place, std::int32_t version);

} // namespace zn::arkin
