#pragma once

#include "base/Text.h"

#include <array>
#include <functional>
#include <optional>

namespace zn {

class FileSystem;
class Registry;
enum class RegistryRoot;

/// A variable of the process's environment, none if it isn't set.
using Environment = std::function<std::optional<Text>(TextView name)>;
Environment processEnvironment();

/// The product's key of the machine, and the name of the user's key.
inline constexpr TextView productKey = u"Software\\Zentrel\\Applications\\Arkin Enterprise";

/// What `SettingsLight::getPath` is asked for by the add-in itself. The other numbers up to 16 stand in its table.
enum PathKind : int {
    PathInstallation = 0,
    PathUserFolder = 3,
    PathStringFiles = 4,
    PathLibraries = 5,
    PathLanguage = 8,
    PathHelpFile = 9,
};

/// Where the product's installation lies and which language it speaks, read from the registry. Made locally by who
/// needs it, used on one thread. A value that can't be read counts as absent; nothing here raises.
class SettingsLight {
public:
    SettingsLight(Registry& registry, FileSystem& files, Environment environment);

    /// The folder of a kind, with a trailing backslash (kinds 9 and 14: a file). Empty if it can't be found and for a
    /// number beyond 16. Whether the folder exists is not looked at. A folder that was found is kept.
    Text getPath(int kind);

    /// The language code, "GB" without a setting.
    Text getLanguage();

private:
    using Rule = Text (SettingsLight::*)();
    struct Folder {
        const char16_t* value; ///< registry value of the product key that names the folder
        const char16_t* below; ///< default, below the installation folder
        Rule rule;             ///< for a folder that neither tells
    };
    static constexpr std::size_t kinds = 17;
    static const std::array<Folder, kinds> folders;

    Text find(const Folder& folder);
    Text userFolder();
    Text userLocation();
    Text languageFolder();
    Text helpFile();
    Text aboveStringFiles();
    Text configurationsFile();
    Text helpViewer();

    Text machineFolder(TextView path);
    std::optional<Text> read(RegistryRoot root, TextView key, TextView name);
    void createSettingsKey();
    void write(RegistryRoot root, TextView key, TextView name, const Text& value);

    Registry& m_registry;
    FileSystem& m_files;
    Environment m_environment;
    std::array<Text, kinds> m_found;
};

} // namespace zn
