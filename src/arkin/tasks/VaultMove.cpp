#include "arkin/tasks/VaultMove.h"

#include "arkin/store/VaultPlace.h"
#include "arkin/tasks/DirectoryMove.h"
#include "arkin/tasks/PathRewrite.h"
#include "arkin/tasks/TaskSchema.h"
#include "arkin/tasks/WorkerStore.h"
#include "base/Paths.h"

#include <soci/soci.h>

namespace zn::arkin {

namespace fs = std::filesystem;
using zn::StatusError;

namespace {

int countOf(Store& store, const std::string& query, std::int32_t vaultId)
{
    int count = 0;
    store.database().session() << query, soci::use(vaultId), soci::into(count);
    return count;
}

const char* const checkOutsOfVault = "FROM check_outs WHERE file_id IN (SELECT id FROM files WHERE vault_id = :v)";
const char* const copiesOfVault = "FROM local_copies WHERE file_id IN (SELECT id FROM files WHERE vault_id = :v)";

void requireNoCheckOutsElsewhere(Store& store, const VaultInfo& vault)
{
    const std::string machine = Caller::current().machine;
    std::string where, user, name;
    store.database().session() << "SELECT c.machine, c.user_name, f.name FROM check_outs c JOIN files f ON f.id = "
                                  "c.file_id WHERE f.vault_id = :v AND c.machine <> :m ORDER BY f.id",
        soci::use(vault.id), soci::use(machine), soci::into(where), soci::into(user), soci::into(name);
    if (store.database().session().got_data())
        throw StatusError(E_ARK_CHECKED_OUT_ELSEWHERE,
            "\"" + name + "\" is checked out to " + user + " on " + where
                + ", where the vault's folder would not move along. Let it be checked in first.");
}

/// The copies of other machines lie in a folder of the former name there.
std::int32_t forgetOtherMachines(Store& store, const VaultInfo& vault)
{
    const std::string machine = Caller::current().machine;
    std::int32_t count = 0;
    const std::string others = copiesOfVault + std::string(" AND machine <> :m");
    store.database().session() << "SELECT COUNT(DISTINCT machine) " + others, soci::use(vault.id), soci::use(machine),
        soci::into(count);
    store.database().session() << "DELETE " + others, soci::use(vault.id), soci::use(machine);
    return count;
}

void requireHomeOutside(Store& store, const VaultInfo& vault)
{
    const auto archive = store.files().fromMachine(store.archive().folder());
    if (zn::isInFolder(archive, vault.root))
        throw StatusError(zn::E_INVALIDARG,
            "The home " + store.archive().folder().parent_path().string()
                + " lies in the vault's folder and can't move with it. Move the home out of it first; a home may be "
                  "moved while nobody works with it.");
}

zn::Text newRoot(Store& store, const VaultInfo& vault, zn::TextView root)
{
    zn::Text path = store.requireRoot(root, vault.id);
    if (zn::isInFolder(path, vault.root) || zn::isInFolder(vault.root, path))
        throw StatusError(E_ARK_BAD_NAME,
            "The folder " + store.files().toMachine(path).string() + " overlaps with "
                + store.files().toMachine(vault.root).string() + ", which the vault has. Choose another folder.");
    return path;
}

void rewritePaths(Store& store, const VaultInfo& vault, VaultMoveReport& report)
{
    PathRewrite rewrite(store.database(), vault.id, report.from, report.to);
    report.tasks = rewrite.taskVariables();
    report.schedules = rewrite.schedules();
    report.waitingRuns = rewrite.waitingRuns();
}

} // namespace

void requireNobodyAtWork(Store& store, const VaultInfo& vault)
{
    const auto now = store.clock().now();
    for (const WorkerInfo& worker : WorkerStore(store.database(), vault.id).list()) {
        if (isGone(worker, now))
            continue;
        const std::string process
            = zn::toUtf8(worker.process.host) + ", process " + std::to_string(worker.process.process);
        if (worker.run)
            throw StatusError(zn::E_INVALIDARG,
                "Run " + std::to_string(worker.run->id) + " is at work (" + process
                    + "). Wait for its end, or cancel it by 'arkin task cancel'.");
        throw StatusError(zn::E_INVALIDARG,
            "A worker works with the vault (" + process + "). Stop it by 'arkin workers --stop "
                + std::to_string(worker.id) + "'.");
    }
}

VaultMoveReport moveVault(Store& store, const VaultInfo& vault, zn::TextView root,
    const std::function<void(std::int64_t done, std::int64_t total)>& progress)
{
    requireOwnRoot(store, vault);
    applySchema(store.database(), taskSchema);
    requireNobodyAtWork(store, vault);
    requireNoCheckOutsElsewhere(store, vault);
    requireHomeOutside(store, vault);
    VaultMoveReport report;
    report.from = vault.root;
    report.to = newRoot(store, vault, root);
    DirectoryMove move(store.files().toMachine(report.from), store.files().toMachine(report.to));
    move.prepare(progress);

    Transaction transaction(store.database());
    requireNobodyAtWork(store, vault);
    requireNoCheckOutsElsewhere(store, vault);
    report.otherMachines = forgetOtherMachines(store, vault);
    writeRoot(store, vault, report.to);
    rewritePaths(store, vault, report);
    move.carryOut();
    try {
        transaction.commit();
    } catch (...) {
        move.undo();
        throw;
    }
    report.leftBehind = move.removeFormer();
    return report;
}

VaultMoveReport relocateVault(Store& store, const VaultInfo& vault, zn::TextView root)
{
    const bool isCopy = otherHome(store, vault).has_value();
    applySchema(store.database(), taskSchema);
    if (!isCopy)
        requireNobodyAtWork(store, vault);
    VaultMoveReport report;
    report.from = vault.root;
    report.to = newRoot(store, vault, root);
    store.makeRoot(report.to);

    Transaction transaction(store.database());
    report.checkOuts = countOf(store, "SELECT COUNT(*) " + std::string(checkOutsOfVault), vault.id);
    store.database().session() << "DELETE " + std::string(copiesOfVault), soci::use(vault.id);
    store.database().session() << "DELETE FROM given_back WHERE file_id IN (SELECT id FROM files WHERE vault_id = :v)",
        soci::use(vault.id);
    writeRoot(store, vault, report.to);
    rewritePaths(store, vault, report);
    transaction.commit();
    return report;
}

} // namespace zn::arkin
