#pragma once

#include "arkin/commands/frame/Session.h"
#include "arkin/tasks/Notice.h"

namespace zn::arkin {

/// Starts notices as processes of this one, a minute each at most.
NoticeSender noticeSender(Session& session);

} // namespace zn::arkin
