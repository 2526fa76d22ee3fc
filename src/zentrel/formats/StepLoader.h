#pragma once

#include <STEPControl_Reader.hxx>

namespace zn::zentrel {

/// Has the reader load files by this program's parser (`Part21Text`), which takes a tenth of the time of the kernel's
/// own. Files that are unusual, and those that the file refers to, are loaded by the kernel's.
void loadFast(STEPControl_Reader& reader);

} // namespace zn::zentrel
