// What the class store finds in the library: the control of the tree of files.

#include "arkin/reftree/RefTreeCtrl.h"
#include "arkin/reftree/RefTreeRegistration.h"
#include "contracts/host/Module.h"
#include "platform/linux/LinuxPlatform.h"

#include <dlfcn.h>

namespace {

using namespace zn;

class ClassFactory : public IClassFactory {
public:
    Status CreateInstance(ObjectRef& object) override
    {
        try {
            object = std::make_shared<zn::arkin::RefTreeCtrl>();
            return S_OK;
        } catch (...) {
            return currentExceptionStatus();
        }
    }
};

std::filesystem::path ownLibrary()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&ownLibrary), &info) == 0 || !info.dli_fname)
        throw StatusError(E_UNEXPECTED, "The library doesn't know its own path.");
    return std::filesystem::canonical(info.dli_fname);
}

template <class Step> Status onThisMachine(Step&& step)
{
    try {
        LinuxPlatform machine(Home::open());
        step(machine);
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

} // namespace

extern "C" {

__attribute__((visibility("default"))) Status DllGetClassObject(const char16_t* classId, ObjectRef* factory)
{
    if (!classId || !factory)
        return E_POINTER;
    if (!equalNoCase(classId, zn::arkin::refTreeClassId))
        return CLASS_E_CLASSNOTAVAILABLE;
    try {
        *factory = std::make_shared<ClassFactory>();
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

/// Always 1: the toolkit may hold on to what the library's windows have brought it.
__attribute__((visibility("default"))) Status DllCanUnloadNow() { return S_FALSE; }

__attribute__((visibility("default"))) Status DllRegisterServer()
{
    return onThisMachine([](LinuxPlatform& machine) {
        zn::arkin::registerRefTree(machine.registry(), machine.files().fromMachine(ownLibrary()));
    });
}

__attribute__((visibility("default"))) Status DllUnregisterServer()
{
    return onThisMachine([](LinuxPlatform& machine) { zn::arkin::unregisterRefTree(machine.registry()); });
}

} // extern "C"
