#include "contracts/classes/ClassStore.h"

#include "base/Status.h"
#include "contracts/classes/ClassLibrary.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <memory>

namespace zn {

namespace {

const char16_t* const classesKey = u"SOFTWARE\\Classes\\";

Text defaultValue(Registry& registry, const Text& key)
{
    const auto value = registry.read(RegistryRoot::Machine, key, u"");
    return value ? value->asText().value_or(Text()) : Text();
}

/// An object with the library that its code lies in: the object has to go first.
struct LoadedObject {
    std::unique_ptr<ClassLibrary> library;
    ObjectRef object;
};

} // namespace

RegisteredClass findClass(Registry& registry, const Text& programId)
{
    RegisteredClass found{programId, defaultValue(registry, classesKey + programId + u"\\CLSID"), {}};
    if (found.classId.empty())
        return found;
    const Text classKey = Text(classesKey) + u"CLSID\\" + found.classId;
    found.library = defaultValue(registry, classKey + u"\\InprocServer32");
    found.isControl = registry.keyExists(RegistryRoot::Machine, classKey + u"\\Control");
    return found;
}

std::vector<RegisteredClass> registeredClasses(Registry& registry)
{
    std::vector<RegisteredClass> classes;
    for (const Text& name : registry.subKeys(RegistryRoot::Machine, u"SOFTWARE\\Classes")) {
        RegisteredClass found = findClass(registry, name);
        if (!found.library.empty())
            classes.push_back(std::move(found));
    }
    return classes;
}

ObjectRef createInstance(Registry& registry, FileSystem& files, const Text& programId)
{
    const RegisteredClass found = findClass(registry, programId);
    if (found.library.empty())
        throw StatusError(REGDB_E_CLASSNOTREG, "The class '" + toUtf8(programId) + "' isn't registered here.");
    return createInstance(files, found);
}

ObjectRef createInstance(FileSystem& files, const RegisteredClass& registered)
{
    auto loaded = std::make_shared<LoadedObject>();
    loaded->library = std::make_unique<ClassLibrary>(files.toMachine(registered.library));
    loaded->object = loaded->library->create(registered.classId);
    Object* const object = loaded->object.get();
    return {std::move(loaded), object};
}

} // namespace zn
