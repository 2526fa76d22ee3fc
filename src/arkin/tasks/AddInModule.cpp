#include "arkin/tasks/AddInModule.h"

#include "base/Status.h"
#include "platform/FileSystem.h"

namespace zn::arkin {

std::shared_ptr<zn::IArkAddIn5> loadAddIn(zn::Registry& registry, zn::FileSystem& files, const zn::Text& programId)
{
    const zn::RegisteredClass registered = zn::findClass(registry, programId);
    if (registered.library.empty())
        throw zn::StatusError(zn::REGDB_E_CLASSNOTREG,
            "The add-in '" + zn::toUtf8(programId)
                + "' isn't registered here; 'arkin addin register LIBRARY' registers it.");
    auto addIn = zn::query<zn::IArkAddIn5>(zn::createInstance(files, registered));
    if (!addIn)
        throw zn::StatusError(zn::E_NOINTERFACE,
            "The library " + files.toMachine(registered.library).string()
                + " is refused: its object isn't a vault add-in.");
    return addIn;
}

std::vector<zn::RegisteredClass> registeredAddIns(zn::Registry& registry)
{
    std::vector<zn::RegisteredClass> addIns = zn::registeredClasses(registry);
    std::erase_if(addIns, [](const zn::RegisteredClass& registered) { return registered.isControl; });
    return addIns;
}

} // namespace zn::arkin
