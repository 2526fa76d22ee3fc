#include "addin/installation/ClosedLibrary.h"

#include "addin/installation/SettingsLight.h"
#include "base/Status.h"
#include "platform/FileSystem.h"

#include <algorithm>

namespace zn {

namespace {

constexpr TextView closedLibraries[] = {u"LexMgr.dll", u"TokenCtrl.dll", u"FlowIcons.dll"};

constexpr Status moduleNotFound = statusCode(0x8007007E);
constexpr Status procedureNotFound = statusCode(0x8007007F);
constexpr Status badModule = statusCode(0x800700C1);

bool isClosed(TextView name)
{
    return std::any_of(std::begin(closedLibraries), std::end(closedLibraries),
        [name](TextView closed) { return equalNoCase(closed, name); });
}

std::string locationValue()
{
    return "the value \"Location\" of the machine's registry key \"" + toUtf8(productKey) + "\"";
}

std::string closedLibraryFile(SettingsLight& settings, FileSystem& files, TextView name)
{
    const Text folder = settings.getPath(PathLibraries);
    if (folder.empty())
        throw StatusError(moduleNotFound,
            "The library \"" + toUtf8(name) + "\" cannot be loaded because the folder of the product is not known. "
                + "Write that folder to " + locationValue() + ".");
    const Text path = folder + Text(name);
    if (!files.fileExists(path))
        throw StatusError(moduleNotFound,
            "The library \"" + toUtf8(path) + "\" was not found. Install the product again, or correct "
                + locationValue() + ".");
    return files.toMachine(path).string();
}

} // namespace

SharedLibrary loadLibrary(SettingsLight& settings, FileSystem& files, TextView name)
{
    const std::string file = isClosed(name) ? closedLibraryFile(settings, files, name) : toUtf8(name);
    try {
        return SharedLibrary(file);
    } catch (const SharedLibrary::Failure& failure) {
        throw StatusError(badModule,
            "The library \"" + toUtf8(name) + "\" could not be loaded: " + failure.what()
                + ". Install the product again.");
    }
}

void* libraryFunction(const SharedLibrary& library, TextView libraryName, const char* function)
{
    void* address = library.find(function);
    if (!address)
        throw StatusError(procedureNotFound,
            "The library \"" + toUtf8(libraryName) + "\" has no function \"" + function
                + "\", so it belongs to another version of the product. Install the product again.");
    return address;
}

} // namespace zn
