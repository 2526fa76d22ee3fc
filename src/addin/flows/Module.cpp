// What a host finds in the library: the exports by which it loads the add-in.

#include "contracts/host/Module.h"
#include "addin/flows/DisplayScaling.h"
#include "addin/flows/PagesLibrary.h"
#include "addin/flows/Registration.h"
#include "addin/flows/ZNTaskAddIn.h"
#include "automation/SocketRunningObjects.h"
#include "platform/linux/LinuxPlatform.h"

#include <atomic>
#include <dlfcn.h>
#include <memory>

namespace {

using namespace zn;

/// Objects that are alive: the library may not be unloaded before they are gone.
std::atomic<int> liveObjects = 0;

std::filesystem::path ownLibrary()
{
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&ownLibrary), &info) == 0 || !info.dli_fname)
        throw StatusError(E_UNEXPECTED, "The library doesn't know its own path.");
    return std::filesystem::canonical(info.dli_fname);
}

/// The ports of this machine; a base, so that they outlive the add-in object that uses them.
class ThisMachine {
protected:
    ThisMachine()
        : m_machine(Home::open())
        , m_runningObjects(m_machine.home().runtimeFolder())
        , m_platform(m_machine.with(m_runningObjects))
    {
        ++liveObjects;
    }
    ~ThisMachine() { --liveObjects; }

    const Platform& platform() const { return m_platform; }

private:
    LinuxPlatform m_machine;
    automation::SocketRunningObjects m_runningObjects;
    Platform m_platform;
};

/// The add-in together with the machine that it runs on.
class AddInOnThisMachine : private ThisMachine, public CZNTaskAddIn {
public:
    AddInOnThisMachine()
        : CZNTaskAddIn(ThisMachine::platform(),
            [this] { return loadPages(ownLibrary().parent_path() / pagesLibraryName, ThisMachine::platform()); })
    {
    }
};

class ClassFactory : public IClassFactory {
public:
    Status CreateInstance(ObjectRef& object) override
    {
        try {
            object = std::make_shared<AddInOnThisMachine>();
            return S_OK;
        } catch (...) {
            return currentExceptionStatus();
        }
    }
};

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

constexpr int toolbarEdgeExplorer = 24;
constexpr int toolbarEdgeZentrel = 16;

int fromRegistry(int (*read)(Registry&, int), int argument, int fallback)
{
    int result = fallback;
    onThisMachine([&](LinuxPlatform& machine) { result = read(machine.registry(), argument); });
    return result;
}

int dpiOf(Registry& registry, int) { return systemDpi(registry); }

} // namespace

extern "C" {

/// The factory of the class `classId`; `CLASS_E_CLASSNOTAVAILABLE` for any other.
__attribute__((visibility("default"))) Status DllGetClassObject(const char16_t* classId, ObjectRef* factory)
{
    if (!classId || !factory)
        return E_POINTER;
    if (!equalNoCase(classId, addInClassId))
        return CLASS_E_CLASSNOTAVAILABLE;
    try {
        *factory = std::make_shared<ClassFactory>();
        return S_OK;
    } catch (...) {
        return currentExceptionStatus();
    }
}

/// 0 when no object is alive, else 1.
__attribute__((visibility("default"))) Status DllCanUnloadNow() { return liveObjects == 0 ? S_OK : S_FALSE; }

__attribute__((visibility("default"))) Status DllRegisterServer()
{
    return onThisMachine(
        [](LinuxPlatform& machine) { registerModule(machine.registry(), machine.files().fromMachine(ownLibrary())); });
}

__attribute__((visibility("default"))) Status DllUnregisterServer()
{
    return onThisMachine([](LinuxPlatform& machine) { unregisterModule(machine.registry()); });
}

/// Dots per inch of the desktop, and edges of toolbar images in pixels at that resolution.
__attribute__((visibility("default"))) int getDPI_OS() { return fromRegistry(dpiOf, 0, 96); }

__attribute__((visibility("default"))) int getSystemDPI() { return fromRegistry(dpiOf, 0, 96); }

__attribute__((visibility("default"))) int getToolbarButtonSizeExp()
{
    return fromRegistry(scaledEdge, toolbarEdgeExplorer, toolbarEdgeExplorer);
}

__attribute__((visibility("default"))) int getToolbarButtonSizeZN()
{
    return fromRegistry(scaledEdge, toolbarEdgeZentrel, toolbarEdgeZentrel);
}

} // extern "C"
