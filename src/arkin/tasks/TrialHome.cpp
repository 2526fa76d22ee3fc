#include "arkin/tasks/TrialHome.h"

#include "arkin/tasks/RunStore.h"
#include "base/Paths.h"
#include "platform/PrivateFiles.h"
#include "platform/Sqlite.h"

#include <soci/soci.h>

namespace zn::arkin {

namespace fs = std::filesystem;

namespace {

/// What belongs to the machine's disk or to work that goes on elsewhere, and not to what the vault holds.
constexpr const char* leftBehind[] = {
    "DELETE FROM local_copies",
    "DELETE FROM given_back",
    "DELETE FROM task_run_paths",
};

void copyRegistry(const fs::path& registryFile, const fs::path& copy)
{
    soci::session session;
    zn::openDatabase(
        session, zn::sqliteConnection(registryFile), {.longestWait = std::chrono::minutes(1), .syncCommits = false});
    zn::copyDatabase(session, copy);
}

} // namespace

TrialHome::TrialHome(Store& store, const fs::path& registryFile, const fs::path& folder)
    : m_store(store)
    , m_home(folder / "home")
    , m_local(folder / "local")
    , m_noCleanMeanwhile(store.archive())
{
    try {
        zn::makePrivateFolder(m_home, zn::Sharing::Nobody);
        zn::makePrivateFolder(m_local, zn::Sharing::Nobody);
        for (const char* file : {"vault.sqlite", "registry.sqlite"})
            zn::makePrivateFile(m_home / file, zn::Sharing::Nobody);
        RunStore(store.database(), 0); // so that the tables of the tasks are there to be copied
        zn::copyDatabase(store.database().session(), m_home / "vault.sqlite");
        copyRegistry(registryFile, m_home / "registry.sqlite");
        Archive(m_home / "archive").setIdentity(store.archive().identity());
        moveVaults();
    } catch (...) {
        const auto failure = currentFailure();
        throw zn::StatusError(failure.status, "The vault couldn't be copied for the trial: " + failure.sentence);
    }
}

void TrialHome::moveVaults()
{
    Database copy(zn::sqliteConnection(m_home / "vault.sqlite"));
    Transaction transaction(copy);
    const std::string archive = (m_home / "archive").string();
    for (const VaultInfo& vault : m_store.vaults()) {
        const fs::path folder = m_local / std::to_string(vault.id)
            / zn::toUtf8(zn::pathFileName(zn::withoutTrailingSeparators(vault.root)));
        fs::create_directories(folder);
        const std::string root = zn::toUtf8(m_store.files().fromMachine(folder));
        // The copy works with its own folder, so it isn't closed as one that stands beside its original.
        copy.session() << "UPDATE vaults SET root = :r, archive_folder = :a WHERE id = :i", soci::use(root),
            soci::use(archive), soci::use(vault.id);
    }
    for (const char* statement : leftBehind)
        copy.session() << statement;
    transaction.commit();
}

} // namespace zn::arkin
