#include "arkin/commands/frame/Session.h"

#include "arkin/commands/frame/DesktopLibrary.h"
#include "arkin/commands/frame/ShellWord.h"
#include "arkin/commands/frame/StartWorker.h"
#include "arkin/store/Codes.h"
#include "arkin/vault/VaultObject.h"
#include "base/Paths.h"
#include "platform/Sqlite.h"

#include <system_error>

namespace zn::arkin {

using zn::StatusError;
using zn::Text;
using zn::toUtf8;

zn::LinuxPlatform& Session::platform()
{
    if (!m_platform) {
        auto home = zn::Home::open(m_options.home);
        home.passToChildren();
        m_platform = std::make_unique<zn::LinuxPlatform>(std::move(home));
    }
    return *m_platform;
}

std::unique_ptr<zn::ContentCache> Session::cache()
{
    const auto& folder = platform().home().cacheFolder();
    try {
        return std::make_unique<zn::ContentCache>(folder, zn::cacheLimit(platform().registry()));
    } catch (const std::system_error& error) {
        throw StatusError(
            zn::E_FAIL, "The cache '" + folder.string() + "' can't be used: " + error.code().message() + ".");
    }
}

Store& Session::store()
{
    if (!m_store) {
        auto& machine = platform();
        m_store = std::make_unique<Store>(zn::sqliteConnection(machine.home().databaseFile()),
            machine.home().archiveFolder(), machine.files(), machine.clock());
    }
    return *m_store;
}

VaultInfo Session::vaultInfo()
{
    if (!m_options.vault.empty()) {
        if (const auto vault = store().findVault(zn::toText(m_options.vault)))
            return *vault;
        throw StatusError(zn::E_INVALIDARG,
            "There is no vault named '" + m_options.vault + "' in " + platform().home().folder().string() + ".");
    }
    const auto vaults = store().vaults();
    if (vaults.size() == 1)
        return vaults.front();
    if (vaults.empty())
        throw StatusError(zn::E_INVALIDARG,
            "There is no vault in " + platform().home().folder().string()
                + " yet; 'arkin vault create NAME --root DIR' makes one.");
    std::string names;
    for (const auto& vault : vaults)
        names += (names.empty() ? "" : ", ") + toUtf8(vault.name);
    throw StatusError(zn::E_INVALIDARG, "There are several vaults (" + names + "); choose one with --vault NAME.");
}

Vault& Session::vault()
{
    if (!m_vault)
        choose(vaultInfo());
    return *m_vault;
}

std::string Session::repeatedOptions()
{
    std::string options;
    if (!m_options.home.empty())
        options += " --home " + shellWord(platform().home().folder().string());
    if (store().vaults().size() > 1)
        options += " --vault " + shellWord(toUtf8(vault().info().name));
    return options;
}

TaskHost Session::taskHost()
{
    auto& machine = platform();
    auto& open = vault();
    auto object = std::make_shared<VaultObject>(open);
    object->setDesktop(m_desktop && m_desktop->canAsk() ? m_desktop.get() : nullptr);
    return {store().database(), open.info().id, object, machine.registry(), machine.files(), machine.clock(),
        zn::toText(open.caller().user), &open, [this] { startWorker(*this); }};
}

Desktop& Session::desktop(bool wanted)
{
    if (!m_desktop) {
        auto& machine = platform(); // the windows work with this home, too
        m_desktop = loadDesktop(programFolder(), desktopSetting(machine.registry(), machine.files(), wanted));
    }
    return *m_desktop;
}

std::filesystem::path programFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path(); }

Text Session::pathOf(const std::string& machinePath)
{
    if (machinePath.empty())
        throw StatusError(zn::E_INVALIDARG, "An empty path names nothing.");
    return zn::canonicalPath(platform().files().fromMachine(std::filesystem::absolute(machinePath)));
}

Text Session::vaultPathOf(const std::string& machinePath)
{
    auto path = pathOf(machinePath);
    if (vault().local().relativePath(path) || std::filesystem::path(machinePath).is_absolute())
        return path;
    return pathOf((std::filesystem::path(shown(vault().info().root)) / machinePath).string());
}

std::string Session::shown(zn::TextView path) { return platform().files().shown(path); }

Place Session::fileAt(const std::string& machinePath)
{
    const auto path = vaultPathOf(machinePath);
    if (const auto place = vault().find(path))
        return *place;
    if (vault().findFolder(path))
        throw StatusError(E_ARK_NOT_IN_VAULT, shown(path) + " is a folder of the vault; name a file.");
    throw StatusError(E_ARK_NOT_IN_VAULT,
        shown(path) + " isn't in the vault '" + toUtf8(vault().info().name) + "'; 'arkin add' puts files there.");
}

std::int32_t Session::folderAt(const std::string& machinePath)
{
    const auto path = vaultPathOf(machinePath);
    if (const auto folder = vault().findFolder(path))
        return *folder;
    throw StatusError(
        E_ARK_NOT_IN_VAULT, shown(path) + " is no folder of the vault '" + toUtf8(vault().info().name) + "'.");
}

} // namespace zn::arkin
