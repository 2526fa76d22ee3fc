#include "arkin/commands/frame/DesktopLibrary.h"

#include "base/Status.h"
#include "platform/SharedLibrary.h"

namespace zn::arkin {

namespace {

zn::SharedLibrary load(const std::filesystem::path& library)
{
    try {
        return zn::SharedLibrary(library, zn::SharedLibrary::Stay::Always);
    } catch (const zn::SharedLibrary::Failure& failure) {
        throw zn::StatusError(zn::E_ARK_NO_DESKTOP,
            std::string("The windows of this program can't be loaded: ") + failure.what()
                + ". Install the program anew, with its windows.");
    }
}

} // namespace

std::unique_ptr<Desktop> loadDesktop(const std::filesystem::path& folder, bool wanted)
{
    const auto library = folder / desktopLibraryName;
    const auto make = load(library).function<MakeDesktopFunction>(makeDesktopName);
    if (!make)
        throw zn::StatusError(zn::E_ARK_NO_DESKTOP,
            library.string() + " isn't the library of this program's windows. Install the program anew.");
    return std::unique_ptr<Desktop>(make(wanted));
}

} // namespace zn::arkin
