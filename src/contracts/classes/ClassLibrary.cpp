#include "contracts/classes/ClassLibrary.h"

#include "base/Format.h"
#include "contracts/host/Module.h"

namespace zn {

namespace {

[[noreturn]] void fail(Status status, const std::string& sentence) { throw StatusError(status, sentence); }

std::string hex(Status status) { return toUtf8(formatText("0x%08X", static_cast<std::uint32_t>(status))); }

SharedLibrary load(const std::filesystem::path& file)
{
    if (!std::filesystem::exists(file))
        fail(REGDB_E_CLASSNOTREG, "The library " + file.string() + " isn't there; build it or register it anew.");
    try {
        return SharedLibrary(file);
    } catch (const SharedLibrary::Failure& failure) {
        fail(E_FAIL, "The library " + file.string() + " can't be loaded: " + failure.what() + ".");
    }
}

} // namespace

ClassLibrary::ClassLibrary(const std::filesystem::path& library)
    : m_file(library)
    , m_library(load(library))
{
}

ClassLibrary::~ClassLibrary()
{
    const auto canUnload = m_library.function<DllFunction>(dllCanUnloadNowName);
    if (canUnload && canUnload() == S_OK)
        m_library.unload();
}

template <class Function> Function ClassLibrary::symbol(const char* name) const
{
    const auto found = m_library.function<Function>(name);
    if (!found)
        fail(E_NOINTERFACE, "The library " + m_file.string() + " has no classes: it exports no " + name + ".");
    return found;
}

ObjectRef ClassLibrary::create(const Text& classId) const
{
    const auto getClassObject = symbol<DllGetClassObjectFunction>(dllGetClassObjectName);
    ObjectRef factoryObject;
    if (const Status status = getClassObject(classId.c_str(), &factoryObject); failed(status))
        fail(status,
            "The library " + m_file.string() + " doesn't offer the class " + toUtf8(classId) + " (" + hex(status)
                + "); register it anew.");
    const auto factory = query<IClassFactory>(factoryObject);
    ObjectRef object;
    const Status status = factory ? factory->CreateInstance(object) : E_NOINTERFACE;
    if (failed(status) || !object)
        fail(status, "The object of " + m_file.string() + " couldn't be created (" + hex(status) + ").");
    return object;
}

void ClassLibrary::callFunction(const char* name, const char* what) const
{
    const Status status = symbol<DllFunction>(name)();
    if (failed(status))
        fail(status, "The library " + m_file.string() + " couldn't be " + what + " (" + hex(status) + ").");
}

void ClassLibrary::registerServer() const { callFunction(dllRegisterServerName, "registered"); }
void ClassLibrary::unregisterServer() const { callFunction(dllUnregisterServerName, "unregistered"); }

} // namespace zn
