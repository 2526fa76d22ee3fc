#include "arkin/reftree/RefTreeRegistration.h"

#include "base/Status.h"
#include "contracts/host/XRefTree.h"
#include "platform/Registry.h"

namespace zn::arkin {

using zn::RegistryRoot;
using zn::Text;

namespace {

const Text programKey = Text(u"SOFTWARE\\Classes\\") + zn::xRefTreeProgramId;
const Text classKey = Text(u"SOFTWARE\\Classes\\CLSID\\") + refTreeClassId;

} // namespace

void registerRefTree(zn::Registry& registry, const Text& library)
{
    const struct {
        Text key;
        Text value; ///< the key's default value
    } entries[] = {
        {programKey, u"Tree of files with their references"},
        {programKey + u"\\CLSID", refTreeClassId},
        {classKey, u"Tree of files with their references"},
        {classKey + u"\\ProgID", zn::xRefTreeProgramId},
        {classKey + u"\\Control", u""},
        {classKey + u"\\InprocServer32", library},
    };
    for (const auto& entry : entries) {
        if (!registry.write(RegistryRoot::Machine, entry.key, u"", zn::RegistryValue::text(entry.value)))
            throw zn::StatusError(
                zn::E_ACCESSDENIED, "The registry key " + zn::toUtf8(entry.key) + " may not be written.");
    }
}

void unregisterRefTree(zn::Registry& registry)
{
    registry.removeKey(RegistryRoot::Machine, programKey);
    registry.removeKey(RegistryRoot::Machine, classKey);
}

} // namespace zn::arkin
