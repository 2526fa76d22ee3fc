#pragma once

#include <filesystem>

namespace zn {

/// Where the system keeps what is its own on this machine.
class Home {
public:
    /// `chosen` (a command line's value), or else the environment's ARKIN_HOME, or else the desktop's convention
    /// ($XDG_DATA_HOME/arkin, ~/.local/share/arkin). Makes the folders that are missing, closed
    /// to others. A home that its group shares (see `sharingOf`) is one of several users.
    ///
    /// The runtime folder is "run" in the home ("run-UID" where a group shares it), for the conventional home
    /// $XDG_RUNTIME_DIR/arkin where there is one. A path that leaves a socket's name no room gives way to a short one
    /// in the system's temporary folder, derived from the home's path, so that every program of the same home finds the
    /// same. It is the user's own and closed to others (0700).
    ///
    /// Raises `StatusError` with a sentence if a folder can't be made, if others may write to the home without sharing
    /// it, or if somebody else owns the runtime folder.
    static Home open(const std::filesystem::path& chosen = {});

    /// Absolute.
    const std::filesystem::path& folder() const { return m_folder; }
    /// Whether it is the one that is used where nothing names another.
    bool isConventional() const { return m_conventional; }
    std::filesystem::path registryFile() const { return m_folder / "registry.sqlite"; }
    std::filesystem::path databaseFile() const { return m_folder / "vault.sqlite"; }
    std::filesystem::path archiveFolder() const { return m_folder / "archive"; }
    /// For sockets and locks. At least 47 bytes are left for a socket's name.
    const std::filesystem::path& runtimeFolder() const { return m_runtime; }

    /// For what programs of this home and user have made and can make again: "cache" in the home ("cache-UID" where a
    /// group shares it), for the conventional home $XDG_CACHE_HOME/arkin or ~/.cache/arkin. Whoever uses it makes it.
    const std::filesystem::path& cacheFolder() const { return m_cache; }

    /// Sets ARKIN_HOME, so that programs started from here use the same home. Before other threads run.
    void passToChildren() const;

private:
    std::filesystem::path m_folder;
    std::filesystem::path m_runtime;
    std::filesystem::path m_cache;
    bool m_conventional = false;
};

} // namespace zn
