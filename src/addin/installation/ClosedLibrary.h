#pragma once

#include "base/Text.h"
#include "platform/SharedLibrary.h"

namespace zn {

class FileSystem;
class SettingsLight;

/// Loads a library by its name ("LexMgr.dll"). The product's own closed libraries, compared without regard to case,
/// are loaded from the product's folder; every other one as the system finds it. A loaded library stays until the
/// process ends, and asking again gives the same handle.
///
/// Raises `StatusError` with a sentence that names the file and what to do: the product's folder is unknown, the file
/// isn't there, or it doesn't load.
SharedLibrary loadLibrary(SettingsLight& settings, FileSystem& files, TextView name);

/// The address of a library's function. Raises `StatusError` if it has none of that name.
void* libraryFunction(const SharedLibrary& library, TextView libraryName, const char* function);

/// A function of a library, such as `libraryFunction<LibraryEntry>(settings, files, u"LexMgr.dll", "entry")`.
template <class Function>
Function libraryFunction(SettingsLight& settings, FileSystem& files, TextView name, const char* function)
{
    return reinterpret_cast<Function>(libraryFunction(loadLibrary(settings, files, name), name, function));
}

} // namespace zn
