#include "contracts/classes/ClassLibrary.h"

#include "base/Format.h"
#include "contracts/host/Module.h"

#include <dlfcn.h>

namespace zn {

namespace {

[[noreturn]] void fail(Status status, const std::string& sentence) { throw StatusError(status, sentence); }

std::string hex(Status status) { return toUtf8(formatText("0x%08X", static_cast<std::uint32_t>(status))); }

} // namespace

ClassLibrary::ClassLibrary(const std::filesystem::path& library)
    : m_library(library)
{
    if (!std::filesystem::exists(library))
        fail(REGDB_E_CLASSNOTREG, "The library " + library.string() + " isn't there; build it or register it anew.");
    m_handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!m_handle) {
        const char* reason = dlerror();
        fail(E_FAIL,
            "The library " + library.string() + " can't be loaded: " + (reason ? reason : "no reason was given") + ".");
    }
}

ClassLibrary::~ClassLibrary()
{
    if (!m_handle)
        return;
    const auto canUnload = reinterpret_cast<DllFunction>(dlsym(m_handle, dllCanUnloadNowName));
    if (canUnload && canUnload() == S_OK)
        dlclose(m_handle);
}

void* ClassLibrary::symbol(const char* name) const
{
    void* found = dlsym(m_handle, name);
    if (!found)
        fail(E_NOINTERFACE, "The library " + m_library.string() + " has no classes: it exports no " + name + ".");
    return found;
}

ObjectRef ClassLibrary::create(const Text& classId) const
{
    const auto getClassObject = reinterpret_cast<DllGetClassObjectFunction>(symbol(dllGetClassObjectName));
    ObjectRef factoryObject;
    if (const Status status = getClassObject(classId.c_str(), &factoryObject); failed(status))
        fail(status,
            "The library " + m_library.string() + " doesn't offer the class " + toUtf8(classId) + " (" + hex(status)
                + "); register it anew.");
    const auto factory = query<IClassFactory>(factoryObject);
    ObjectRef object;
    const Status status = factory ? factory->CreateInstance(object) : E_NOINTERFACE;
    if (failed(status) || !object)
        fail(status, "The object of " + m_library.string() + " couldn't be created (" + hex(status) + ").");
    return object;
}

void ClassLibrary::callFunction(const char* name, const char* what) const
{
    const Status status = reinterpret_cast<DllFunction>(symbol(name))();
    if (failed(status))
        fail(status, "The library " + m_library.string() + " couldn't be " + what + " (" + hex(status) + ").");
}

void ClassLibrary::registerServer() const { callFunction(dllRegisterServerName, "registered"); }
void ClassLibrary::unregisterServer() const { callFunction(dllUnregisterServerName, "unregistered"); }

} // namespace zn
