#include "addin/installation/ClosedLibrary.h"

#include "addin/installation/SettingsLight.h"
#include "base/Status.h"
#include "platform/FileSystem.h"

#include <algorithm>
#include <dlfcn.h>

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

void* loadLibrary(SettingsLight& settings, FileSystem& files, TextView name)
{
    const std::string file = isClosed(name) ? closedLibraryFile(settings, files, name) : toUtf8(name);
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* reason = dlerror();
        throw StatusError(badModule,
            "The library \"" + toUtf8(name) + "\" could not be loaded: " + (reason ? reason : "no reason was given")
                + ". Install the product again.");
    }
    return library;
}

void* libraryFunction(void* library, TextView libraryName, const char* function)
{
    void* address = dlsym(library, function);
    if (!address)
        throw StatusError(procedureNotFound,
            "The library \"" + toUtf8(libraryName) + "\" has no function \"" + function
                + "\", so it belongs to another version of the product. Install the product again.");
    return address;
}

} // namespace zn
