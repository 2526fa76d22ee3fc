#pragma once

#include "zentrel/formats/Completeness.h"

#include <XSControl_WorkSession.hxx>

namespace zn::zentrel {

/// What an IGES file that has been transferred lists, and what of it the kernel made nothing of.
ReadCount countIges(const Handle(XSControl_WorkSession) & session);

} // namespace zn::zentrel
