#include "arkin/commands/frame/DesktopLibrary.h"

#include "arkin/commands/frame/RegistryKey.h"
#include "arkin/commands/frame/Session.h"
#include "base/Status.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"
#include "platform/SharedLibrary.h"

namespace zn::arkin {

namespace {

zn::SharedLibrary load(const std::filesystem::path& library)
{
    try {
        return zn::SharedLibrary(library, zn::SharedLibrary::Stay::Always);
    } catch (const zn::SharedLibrary::Failure& failure) {
        throw zn::StatusError(zn::E_ARK_NO_DESKTOP,
            std::string("The windows of this program can't be loaded: ") + failure.what()
                + ". Install the program anew, with its windows.");
    }
}

constexpr const char16_t* globalSettings
    = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\Vaults\\_-Global\\Settings";

/// A text of the machine's registry; empty if there is none.
zn::Text textOf(zn::Registry& registry, zn::TextView key, const char16_t* name)
{
    const auto value = registry.read(zn::RegistryRoot::Machine, key, name);
    return value ? value->asText().value_or(zn::Text()) : zn::Text();
}

/// "S" is an old name of English.
bool tellsLanguage(const zn::Text& code) { return !code.empty() && !zn::equalNoCase(code, u"S"); }

} // namespace

DesktopSetting desktopSetting(zn::Registry& registry, zn::FileSystem& files, bool wanted)
{
    zn::Text language = textOf(registry, globalSettings, u"0");
    if (!tellsLanguage(language))
        language = textOf(registry, productKey, u"DefaultLanguage");
    const zn::Text folder = textOf(registry, productKey, u"LanFileDir");
    return {wanted, tellsLanguage(language) ? zn::toUtf8(language) : std::string(),
        folder.empty() ? programFolder() / "LanFiles" : files.toMachine(folder)};
}

std::unique_ptr<Desktop> loadDesktop(const std::filesystem::path& folder, const DesktopSetting& setting)
{
    const auto library = folder / desktopLibraryName;
    const auto make = load(library).function<MakeDesktopFunction>(makeDesktopName);
    if (!make)
        throw zn::StatusError(zn::E_ARK_NO_DESKTOP,
            library.string() + " isn't the library of this program's windows. Install the program anew.");
    return std::unique_ptr<Desktop>(make(setting));
}

} // namespace zn::arkin
