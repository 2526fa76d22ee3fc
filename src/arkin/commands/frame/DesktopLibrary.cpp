#include "arkin/commands/frame/DesktopLibrary.h"

#include "base/Status.h"

#include <dlfcn.h>

namespace arkin {

std::unique_ptr<Desktop> loadDesktop(const std::filesystem::path& folder, bool wanted)
{
    const auto library = folder / desktopLibraryName;
    void* const handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!handle) {
        const char* const reason = dlerror();
        throw zn::StatusError(zn::E_ARK_NO_DESKTOP,
            "The windows of this program can't be loaded: " + std::string(reason ? reason : library.string())
                + ". Install the program anew, with its windows.");
    }
    const auto make = reinterpret_cast<MakeDesktopFunction>(dlsym(handle, makeDesktopName));
    if (!make)
        throw zn::StatusError(zn::E_ARK_NO_DESKTOP,
            library.string() + " isn't the library of this program's windows. Install the program anew.");
    return std::unique_ptr<Desktop>(make(wanted));
}

} // namespace arkin
