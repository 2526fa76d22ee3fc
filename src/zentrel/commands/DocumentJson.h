#pragma once

#include "commandline/Json.h"
#include "zentrel/model/Describe.h"

namespace zn::zentrel::commands {

/// "part", "assembly" or "drawing".
const char* kindName(DocumentKind kind);
/// What is in a document: lengths in mm.
commandline::Json documentJson(const DocumentInfo& info);

} // namespace zn::zentrel::commands
