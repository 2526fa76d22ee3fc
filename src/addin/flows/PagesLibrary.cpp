#include "addin/flows/PagesLibrary.h"

#include "platform/SharedLibrary.h"

namespace zn {

namespace {

SharedLibrary load(const std::filesystem::path& library)
{
    try {
        return SharedLibrary(library, SharedLibrary::Stay::Always);
    } catch (const SharedLibrary::Failure& failure) {
        throw StatusError(
            E_FAIL, "The add-in's windows can't be loaded from " + library.string() + ": " + failure.what() + ".");
    }
}

} // namespace

std::shared_ptr<PageFactory> loadPages(const std::filesystem::path& library, const Platform& platform)
{
    const auto make = load(library).function<MakePageFactoryFunction>(makePageFactoryName);
    if (!make)
        throw StatusError(E_NOINTERFACE, library.string() + " isn't the add-in's library of windows; install it anew.");
    std::shared_ptr<PageFactory> factory;
    Text why;
    if (const Status status = make(&platform, &factory, &why); failed(status))
        throw StatusError(status, toUtf8(why));
    return factory;
}

} // namespace zn
