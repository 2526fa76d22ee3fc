#pragma once

#include "arkin/desktop/Desktop.h"
#include "arkin/store/Vault.h"
#include "arkin/tasks/TaskHost.h"
#include "arkin/tasks/TaskStore.h"
#include "platform/ContentCache.h"
#include "platform/linux/LinuxPlatform.h"

#include <memory>

namespace zn::arkin {

/// What stands before or behind every subcommand.
struct CommonOptions {
    std::string home;
    std::string vault;
    bool json = false;
};

/// The machine, the home and the vault that a command works with; each is opened when it is first asked for.
class Session {
public:
    explicit Session(CommonOptions options)
        : m_options(std::move(options))
    {
    }

    bool json() const { return m_options.json; }
    /// Opening the home hands it to child processes and to add-ins, too.
    zn::LinuxPlatform& platform();
    /// What the home's programs keep for later. Raises `StatusError` with a sentence.
    std::unique_ptr<zn::ContentCache> cache();
    Store& store();
    /// The vault of the option, or the home's only one. Raises `StatusError` with a sentence if that isn't settled.
    Vault& vault();
    /// The same without opening it.
    VaultInfo vaultInfo();
    /// From now on the session's vault is this one.
    void choose(const VaultInfo& vault) { m_vault = std::make_unique<Vault>(store(), vault); }
    /// The options of home and vault that a later command line has to repeat to mean the same, with a blank before
    /// each.
    std::string repeatedOptions();
    /// For launching and running tasks; the session outlives it. Its vault asks in the windows of the desktop, if the
    /// desktop is there by then and somebody can be asked.
    TaskHost taskHost();
    /// The host's windows; loads their library at the first call. `wanted` false asks nobody, whatever display there
    /// is. Raises `StatusError` with a sentence if the library isn't there.
    Desktop& desktop(bool wanted);
    TaskStore tasks() { return {store().database(), vault().info().id}; }

    /// A machine's path of the command line as a backslash path; a relative one is below the current folder.
    zn::Text pathOf(const std::string& machinePath);
    /// As `pathOf`, for a place in the vault: a relative path that doesn't lead into the vault's folder from here is
    /// taken below the vault's root.
    zn::Text vaultPathOf(const std::string& machinePath);
    /// A backslash path as this machine writes it.
    std::string shown(zn::TextView path);
    /// The place of a file that the vault has. Raises `StatusError` with a sentence.
    Place fileAt(const std::string& machinePath);
    std::int32_t folderAt(const std::string& machinePath);

private:
    CommonOptions m_options;
    std::unique_ptr<zn::LinuxPlatform> m_platform;
    std::unique_ptr<Store> m_store;
    std::unique_ptr<Vault> m_vault;
    std::unique_ptr<Desktop> m_desktop;
};

/// The folder of this program, beside which everything lies that belongs to it.
std::filesystem::path programFolder();

} // namespace zn::arkin
