#include "platform/SharedLibrary.h"

#include <dlfcn.h>
#include <utility>

namespace zn {

SharedLibrary::SharedLibrary(const std::filesystem::path& file, Stay stay)
    : m_handle(::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | (stay == Stay::Always ? RTLD_NODELETE : 0)))
{
    if (m_handle)
        return;
    const char* const reason = ::dlerror();
    throw Failure(reason ? reason : "no reason was given");
}

void* SharedLibrary::find(const char* name) const { return ::dlsym(m_handle, name); }

void SharedLibrary::unload()
{
    if (void* const handle = std::exchange(m_handle, nullptr))
        ::dlclose(handle);
}

} // namespace zn
