#include "arkin/tasks/AddInModule.h"

#include "arkin/store/Codes.h"
#include "base/Format.h"
#include "host/Module.h"

#include <dlfcn.h>

namespace arkin {

using zn::RegistryRoot;
using zn::Status;
using zn::StatusError;
using zn::Text;
using zn::toUtf8;

namespace {

const char16_t* const classesKey = u"SOFTWARE\\Classes";

[[noreturn]] void fail(Status status, const std::string& sentence) { throw StatusError(status, sentence); }

std::string hex(Status status) { return zn::toUtf8(zn::formatText("0x%08X", static_cast<std::uint32_t>(status))); }

Text defaultValue(zn::Registry& registry, const Text& key)
{
    const auto value = registry.read(RegistryRoot::Machine, key, u"");
    return value ? value->asText().value_or(Text()) : Text();
}

Text libraryOf(zn::Registry& registry, const Text& classId)
{
    return defaultValue(registry, Text(classesKey) + u"\\CLSID\\" + classId + u"\\InprocServer32");
}

} // namespace

AddInModule::AddInModule(const std::filesystem::path& library)
    : m_library(library)
{
    if (!std::filesystem::exists(library))
        fail(zn::REGDB_E_CLASSNOTREG,
            "The add-in's library " + library.string() + " isn't there; build it or register it anew.");
    m_handle = dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!m_handle) {
        const char* reason = dlerror();
        fail(zn::E_FAIL,
            "The library " + library.string() + " can't be loaded: " + (reason ? reason : "no reason was given") + ".");
    }
}

AddInModule::~AddInModule()
{
    if (!m_handle)
        return;
    const auto canUnload = reinterpret_cast<zn::DllFunction>(dlsym(m_handle, zn::dllCanUnloadNowName));
    if (canUnload && canUnload() == zn::S_OK)
        dlclose(m_handle);
}

void* AddInModule::symbol(const char* name) const
{
    void* found = dlsym(m_handle, name);
    if (!found)
        fail(zn::E_NOINTERFACE, "The library " + m_library.string() + " isn't an add-in: it exports no " + name + ".");
    return found;
}

zn::ObjectRef AddInModule::create(const Text& classId) const
{
    const auto getClassObject = reinterpret_cast<zn::DllGetClassObjectFunction>(symbol(zn::dllGetClassObjectName));
    zn::ObjectRef factoryObject;
    if (const auto status = getClassObject(classId.c_str(), &factoryObject); zn::failed(status))
        fail(status,
            "The library " + m_library.string() + " doesn't offer the class " + toUtf8(classId) + " (" + hex(status)
                + "); register it anew.");
    const auto factory = zn::query<zn::IClassFactory>(factoryObject);
    zn::ObjectRef object;
    const auto status = factory ? factory->CreateInstance(object) : zn::E_NOINTERFACE;
    if (zn::failed(status) || !object)
        fail(status, "The add-in in " + m_library.string() + " couldn't be created (" + hex(status) + ").");
    return object;
}

void AddInModule::callFunction(const char* name, const char* what) const
{
    const auto status = reinterpret_cast<zn::DllFunction>(symbol(name))();
    if (zn::failed(status))
        fail(status, "The library " + m_library.string() + " couldn't be " + what + " (" + hex(status) + ").");
}

void AddInModule::registerServer() const { callFunction(zn::dllRegisterServerName, "registered"); }
void AddInModule::unregisterServer() const { callFunction(zn::dllUnregisterServerName, "unregistered"); }

std::shared_ptr<zn::IArkAddIn5> loadAddIn(zn::Registry& registry, zn::FileSystem& files, const Text& programId)
{
    const auto classId = defaultValue(registry, Text(classesKey) + u"\\" + programId + u"\\CLSID");
    const auto library = classId.empty() ? Text() : libraryOf(registry, classId);
    if (library.empty())
        fail(zn::REGDB_E_CLASSNOTREG,
            "The add-in '" + toUtf8(programId)
                + "' isn't registered here; 'arkin addin register LIBRARY' registers it.");
    auto module = std::make_shared<AddInModule>(files.toMachine(library));
    auto object = module->create(classId);
    const auto addIn = zn::query<zn::IArkAddIn5>(object);
    if (!addIn) {
        // The object's code is in the library: it has to go first.
        object.reset();
        fail(zn::E_NOINTERFACE,
            "The library " + files.toMachine(library).string() + " is refused: its object isn't a vault add-in.");
    }
    auto* const pointer = addIn.get();
    return {pointer, [module, held = addIn](zn::IArkAddIn5*) mutable {
                held.reset();
                module.reset();
            }};
}

std::vector<RegisteredAddIn> registeredAddIns(zn::Registry& registry)
{
    std::vector<RegisteredAddIn> addIns;
    for (const auto& name : registry.subKeys(RegistryRoot::Machine, classesKey)) {
        const auto classId = defaultValue(registry, Text(classesKey) + u"\\" + name + u"\\CLSID");
        const auto library = classId.empty() ? Text() : libraryOf(registry, classId);
        if (!library.empty())
            addIns.push_back({name, classId, library});
    }
    return addIns;
}

} // namespace arkin
