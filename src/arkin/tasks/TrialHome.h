#pragma once

#include "arkin/store/Vault.h"

#include <filesystem>

namespace zn::arkin {

/// A copy of a home in which a task can be tried: database and registry as they are at this moment, with the ids of all
/// files, and local folders of its own. Nobody's local copies are in it, and nothing that runs at work have kept for
/// themselves. Contents are read from the store's archive and none are copied, so the store has to live as long as the
/// copy is used; nothing is written to the store.
class TrialHome {
public:
    /// Makes "home" and "local" in `folder`, which is there, empty and this user's own. Raises `StatusError` with a
    /// sentence.
    TrialHome(Store& store, const std::filesystem::path& registryFile, const std::filesystem::path& folder);

    const std::filesystem::path& home() const { return m_home; }
    /// Lets the copy's store read the contents.
    void lendContents(Store& copy) const { copy.archive().readBehind(m_store.archive().folder()); }

private:
    void moveVaults();

    Store& m_store;
    std::filesystem::path m_home;
    std::filesystem::path m_local;   ///< the vaults' folders lie in it, each in one by its number
    ArchiveBatch m_noCleanMeanwhile; ///< a clean could set aside what the copy still names
};

} // namespace zn::arkin
