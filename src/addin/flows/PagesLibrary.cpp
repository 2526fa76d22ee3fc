#include "addin/flows/PagesLibrary.h"

#include <dlfcn.h>

namespace zn {

std::shared_ptr<PageFactory> loadPages(const std::filesystem::path& library, const Platform& platform)
{
    void* handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (!handle) {
        const char* reason = dlerror();
        throw StatusError(E_FAIL,
            "The add-in's windows can't be loaded from " + library.string() + ": "
                + (reason ? reason : "no reason was given") + ".");
    }
    const auto make = reinterpret_cast<MakePageFactoryFunction>(dlsym(handle, makePageFactoryName));
    if (!make)
        throw StatusError(E_NOINTERFACE, library.string() + " isn't the add-in's library of windows; install it anew.");
    std::shared_ptr<PageFactory> factory;
    Text why;
    if (const Status status = make(&platform, &factory, &why); failed(status))
        throw StatusError(status, toUtf8(why));
    return factory;
}

} // namespace zn
