#pragma once

#include "zentrel/formats/Completeness.h"

#include <Standard_Transient.hxx>
#include <XSControl_WorkSession.hxx>

namespace zn::zentrel {

/// Whether the entity of a STEP file is a solid or a surface model, which a body is made of.
bool isStepSolid(const Handle(Standard_Transient) & entity);

/// What a STEP file that has been transferred lists, and what of it the kernel made nothing of.
ReadCount countStep(const Handle(XSControl_WorkSession) & session, const std::vector<Body>& bodies);

} // namespace zn::zentrel
