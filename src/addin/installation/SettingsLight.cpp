#include "addin/installation/SettingsLight.h"

#include "base/Paths.h"
#include "base/Status.h"
#include "platform/FileSystem.h"
#include "platform/Registry.h"

#include <cstdlib>

namespace zn {

namespace {

constexpr auto machine = RegistryRoot::Machine;
constexpr auto user = RegistryRoot::User;
constexpr TextView settingsKey = u"Software\\Zentrel\\Applications\\Arkin Enterprise\\Vaults\\_-Global\\Settings";
constexpr TextView english = u"GB";
/// An older name of English.
constexpr TextView oldEnglish = u"S";

Text withSeparator(Text folder)
{
    if (!folder.empty() && folder.back() != u'\\')
        folder += u'\\';
    return folder;
}

} // namespace

Environment processEnvironment()
{
    return [](TextView name) -> std::optional<Text> {
        const char* value = std::getenv(toUtf8(name).c_str());
        return value ? std::optional(toText(value)) : std::nullopt;
    };
}

// clang-format off
const std::array<SettingsLight::Folder, SettingsLight::kinds> SettingsLight::folders = {{
    /*  0 */ {u"Location",       nullptr,                     nullptr},
    /*  1 */ {u"SharedLocation", nullptr,                     nullptr},
    /*  2 */ {u"Location",       nullptr,                     nullptr},
    /*  3 */ {nullptr,           nullptr,                     &SettingsLight::userFolder},
    /*  4 */ {u"LanFileDir",     u"LanFiles\\",               nullptr},
    /*  5 */ {u"Location",       nullptr,                     nullptr},
    /*  6 */ {u"InsoBinDir",     u"FileFormats\\InsoBin\\",   nullptr},
    /*  7 */ {nullptr,           nullptr,                     &SettingsLight::userLocation},
    /*  8 */ {u"LangDir",        nullptr,                     &SettingsLight::languageFolder},
    /*  9 */ {nullptr,           nullptr,                     &SettingsLight::helpFile},
    /* 10 */ {u"DefaultDataDir", u"Default Data\\",           nullptr},
    /* 11 */ {u"DefaultCardDir", u"Default Cards\\",          nullptr},
    /* 12 */ {nullptr,           nullptr,                     &SettingsLight::aboveStringFiles},
    /* 13 */ {u"DefConfigDir",   u"Default Configurations\\", nullptr},
    /* 14 */ {nullptr,           nullptr,                     &SettingsLight::configurationsFile},
    /* 15 */ {nullptr,           nullptr,                     &SettingsLight::helpViewer},
    /* 16 */ {u"Location",       nullptr,                     nullptr},
}};
// clang-format on

SettingsLight::SettingsLight(Registry& registry, FileSystem& files, Environment environment)
    : m_registry(registry)
    , m_files(files)
    , m_environment(std::move(environment))
{
}

Text SettingsLight::getPath(int kind)
{
    if (kind < 0 || static_cast<std::size_t>(kind) >= kinds)
        return {};
    const auto index = static_cast<std::size_t>(kind);
    if (m_found[index].empty())
        m_found[index] = find(folders[index]);
    return m_found[index];
}

Text SettingsLight::find(const Folder& folder)
{
    if (folder.value) {
        if (auto stored = read(machine, productKey, folder.value))
            return withSeparator(*stored);
    }
    if (folder.rule)
        return (this->*folder.rule)();
    const Text location = folder.below ? getPath(PathInstallation) : Text();
    return location.empty() ? location : location + folder.below;
}

/// The first place for a user's data that is there: the local one, the roaming one, the one that APPDATA names.
Text SettingsLight::userFolder()
{
    const auto variable = [this](TextView name, TextView more) {
        const Text value = m_environment(name).value_or(Text());
        return value.empty() ? value : value + Text(more);
    };
    const Text local = variable(u"XDG_DATA_HOME", u"");
    const Text roaming = variable(u"XDG_CONFIG_HOME", u"");
    for (const Text& place : {local.empty() ? variable(u"HOME", u"/.local/share") : local,
             roaming.empty() ? variable(u"HOME", u"/.config") : roaming, variable(u"APPDATA", u"")}) {
        const Text base = machineFolder(place);
        const auto found = base.empty() ? std::nullopt : m_files.attributes(base);
        if (!found || !found->folder)
            continue;
        const Text folder = pathAppend(base, u"ZENTREL\\ZENTREL ARKIN");
        m_files.createFolders(folder);
        const auto made = m_files.attributes(folder);
        return made && made->folder ? withSeparator(folder) : Text();
    }
    return {};
}

Text SettingsLight::userLocation() { return withSeparator(read(user, productKey, u"Location").value_or(Text())); }

Text SettingsLight::languageFolder()
{
    const Text location = getPath(PathInstallation);
    return location.empty() ? location : location + u"Lang\\" + getLanguage() + u"\\";
}

Text SettingsLight::helpFile()
{
    constexpr TextView name = u"FileExplorer.chm";
    const Text folder = getPath(PathLanguage);
    if (folder.empty())
        return {};
    Text ofLanguage = folder + Text(name);
    if (m_files.fileExists(ofLanguage))
        return ofLanguage;
    return withSeparator(pathFolder(withoutTrailingSeparators(folder))) + Text(english) + u"\\" + Text(name);
}

Text SettingsLight::aboveStringFiles()
{
    return withSeparator(pathFolder(withoutTrailingSeparators(getPath(PathStringFiles))));
}

Text SettingsLight::configurationsFile()
{
    constexpr int configurations = 13;
    const Text folder = getPath(configurations);
    return folder.empty() ? folder : folder + u"VaultConfigurations.ini";
}

Text SettingsLight::helpViewer()
{
    const Text programs = machineFolder(m_environment(u"ProgramFiles(x86)").value_or(Text()));
    return programs.empty() ? programs : withSeparator(pathAppend(programs, u"ZENTREL\\Help Viewer"));
}

Text SettingsLight::getLanguage()
{
    createSettingsKey();
    if (const auto chosen = read(machine, settingsKey, u"0"); chosen && !equalNoCase(*chosen, oldEnglish))
        return *chosen;
    auto fallback = read(machine, productKey, u"DefaultLanguage");
    if (!fallback)
        return Text(english);
    if (equalNoCase(*fallback, oldEnglish))
        fallback = Text(english);
    write(machine, settingsKey, u"0", *fallback);
    write(machine, productKey, u"Language", *fallback);
    write(user, productKey, u"DefaultLanguage", *fallback);
    return *fallback;
}

/// A folder that the environment names, in this machine's form or as a backslash path; empty if it can't be one.
Text SettingsLight::machineFolder(TextView path)
{
    if (path.empty() || path.front() != u'/')
        return Text(path);
    try {
        return m_files.fromMachine(std::filesystem::path(toUtf8(path)));
    } catch (const StatusError&) {
        return {};
    }
}

/// An unreadable store counts as one without the value: a window without a language opens in English.
std::optional<Text> SettingsLight::read(RegistryRoot root, TextView key, TextView name)
{
    try {
        const auto value = m_registry.read(root, key, name);
        auto text = value ? value->asText() : std::nullopt;
        return text && !text->empty() ? text : std::nullopt;
    } catch (const StatusError&) {
        return std::nullopt;
    }
}

void SettingsLight::createSettingsKey()
{
    try {
        m_registry.createKey(machine, settingsKey);
    } catch (const StatusError&) {
        // Who reads the settings finds none, which is as good.
    }
}

void SettingsLight::write(RegistryRoot root, TextView key, TextView name, const Text& value)
{
    try {
        m_registry.write(root, key, name, RegistryValue::text(value));
    } catch (const StatusError&) {
        // It is remembered where that is allowed; the language holds for this time in any case.
    }
}

} // namespace zn
