#include "addin/flows/Registration.h"

#include "base/Paths.h"
#include "base/Status.h"

namespace zn {

namespace {

constexpr const char16_t* applicationId = u"{C4D9A1E0-58B3-4D27-9F36-60E2B7158D4C}";
constexpr const char16_t* typeLibraryId = u"{19F0E8B4-6A7D-4C52-A3E1-5BD8C2F70946}";
constexpr const char16_t* description = u"ZNTaskAddIn Class";
constexpr const char16_t* versionIndependentId = u"ZNTaskAddIn.ZNTaskAddIn";
constexpr const char16_t* versionedId = u"ZNTaskAddIn.ZNTaskAddIn.1";
constexpr RegistryView views[] = {RegistryView::Bits64, RegistryView::Bits32};

struct Entry {
    Text key;  ///< below SOFTWARE\Classes
    Text name; ///< empty for the key's default value
    Text value;
};

Text classKey() { return Text(u"CLSID\\") + addInClassId; }

std::vector<Entry> classEntries(const Text& libraryPath)
{
    const Text cls = classKey();
    return {
        {versionedId, u"", description},
        {Text(versionedId) + u"\\CLSID", u"", addInClassId},
        {versionIndependentId, u"", description},
        {Text(versionIndependentId) + u"\\CLSID", u"", addInClassId},
        {Text(versionIndependentId) + u"\\CurVer", u"", versionedId},
        {cls, u"", description},
        {cls, u"AppID", applicationId},
        {cls + u"\\ProgID", u"", versionedId},
        {cls + u"\\VersionIndependentProgID", u"", versionIndependentId},
        {cls + u"\\Programmable", u"", u""},
        {cls + u"\\InprocServer32", u"", libraryPath},
        {cls + u"\\InprocServer32", u"ThreadingModel", u"Both"},
        {cls + u"\\TypeLib", u"", typeLibraryId},
        {Text(u"AppID\\") + applicationId, u"", u"ZNTaskAddIn"},
        {u"AppID\\ZNTaskAddIn.DLL", u"AppID", applicationId},
    };
}

Text below(const Text& key) { return pathAppend(u"SOFTWARE\\Classes", key); }

} // namespace

void registerModule(Registry& registry, const Text& libraryPath)
{
    for (const RegistryView view : views) {
        for (const Entry& entry : classEntries(libraryPath)) {
            if (!registry.write(
                    RegistryRoot::Machine, below(entry.key), entry.name, RegistryValue::text(entry.value), view))
                throw StatusError(E_ACCESSDENIED, "The registry key " + toUtf8(entry.key) + " may not be written.");
        }
    }
}

void unregisterModule(Registry& registry)
{
    const Text keys[]
        = {versionedId, versionIndependentId, classKey(), Text(u"AppID\\") + applicationId, u"AppID\\ZNTaskAddIn.DLL"};
    for (const RegistryView view : views) {
        for (const Text& key : keys)
            registry.removeKey(RegistryRoot::Machine, below(key), view);
    }
}

} // namespace zn
