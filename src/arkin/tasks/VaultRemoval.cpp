#include "arkin/tasks/VaultRemoval.h"

#include "arkin/tasks/RunPrune.h"
#include "arkin/tasks/TaskSchema.h"
#include "arkin/tasks/VaultMove.h"
#include "platform/Sqlite.h"

#include <date/date.h>
#include <fmt/format.h>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

namespace fs = std::filesystem;

/// Tables and which of their rows are the vault's, in an order in which none is left that names a missing one.
struct Part {
    const char* table;
    const char* condition;
};

constexpr const char* ofFiles = "file_id IN (SELECT id FROM files WHERE vault_id = {0})";
constexpr const char* ofFolders = "folder_id IN (SELECT id FROM folders WHERE vault_id = {0})";
constexpr const char* ofTasks = "task_id IN (SELECT id FROM tasks WHERE vault_id = {0})";
constexpr const char* ofRuns = "run_id IN (SELECT id FROM task_runs WHERE vault_id = {0})";
constexpr const char* ofSchedules = "schedule_id IN (SELECT id FROM task_schedules WHERE vault_id = {0})";
constexpr const char* ofVault = "vault_id = {0}";

constexpr Part parts[] = {
    {"task_variables", ofTasks},
    {"task_menu_entries", ofTasks},
    {"tasks", ofVault},
    {"task_run_variables", ofRuns},
    {"task_run_items", ofRuns},
    {"task_run_documents", ofRuns},
    {"task_run_messages", ofRuns},
    {"task_run_paths", ofRuns},
    {"task_run_results", ofRuns},
    {"task_run_audits", ofRuns},
    {"task_run_works", ofRuns},
    {"task_run_macros", ofRuns},
    {"task_runs", ofVault},
    {"task_schedule_items", ofSchedules},
    {"task_schedules", ofVault},
    {"task_workers", ofVault},
    {"local_copies", ofFiles},
    {"given_back", ofFiles},
    {"given_up", ofFiles},
    {"file_moves", ofFiles},
    {"deleted_places", ofFiles},
    {"document_references", ofFiles},
    {"document_parts", ofFiles},
    {"file_references", ofFiles},
    {"card_values", ofFiles},
    {"check_outs", ofFiles},
    {"versions", ofFiles},
    {"file_folders", ofFiles},
    {"variables", ofVault},
    {"permissions", ofFolders},
    {"files", ofVault},
    {"folders", ofVault},
    {"vaults", "id = {0}"},
};

std::string rowsOf(const Part& part, std::int32_t vaultId)
{
    return fmt::format("FROM {} WHERE {}", part.table, fmt::format(fmt::runtime(part.condition), vaultId));
}

std::int64_t count(Store& store, const Part& part, std::int32_t vaultId)
{
    long long count = 0;
    store.database().session() << "SELECT COUNT(*) " + rowsOf(part, vaultId), soci::into(count);
    return count;
}

VaultRemovalReport countRows(Store& store, const VaultInfo& vault)
{
    VaultRemovalReport report;
    report.files = count(store, {"files", ofVault}, vault.id);
    report.versions = count(store, {"versions", ofFiles}, vault.id);
    report.checkOuts = count(store, {"check_outs", ofFiles}, vault.id);
    report.tasks = count(store, {"tasks", ofVault}, vault.id);
    report.runs = count(store, {"task_runs", ofVault}, vault.id);
    return report;
}

void requireRemovable(Store& store, const VaultInfo& vault, bool givenUp)
{
    requireNobodyAtWork(store, vault);
    const std::int64_t checkOuts = count(store, {"check_outs", ofFiles}, vault.id);
    if (checkOuts > 0 && !givenUp)
        throw zn::StatusError(E_ARK_CHECKED_OUT,
            fmt::format(
                "{} checked out; 'arkin status' lists them. Let them be checked in, or say --force to give their "
                "check-outs up.",
                checkOuts == 1 ? "A file of the vault is" : fmt::format("{} files of the vault are", checkOuts)));
}

/// A copy of the database that nobody else may read.
fs::path keepCopy(Store& store, const VaultInfo& vault)
{
    const fs::path folder = store.archive().folder().parent_path() / "removed";
    const std::chrono::sys_seconds now{std::chrono::seconds(store.clock().now())};
    fs::path copy
        = folder / fmt::format("{}-{}.sqlite", zn::toUtf8(vault.name), date::format("%Y-%m-%dT%H-%M-%SZ", now));
    std::error_code error;
    fs::create_directories(folder, error);
    if (!error)
        fs::permissions(folder, fs::perms::owner_all, error);
    if (error)
        throw zn::StatusError(E_ARK_ARCHIVE,
            "Could not create the folder " + folder.string() + " for a copy of the database: " + error.message()
                + ". Nothing was removed.");
    zn::copyDatabase(store.database().session(), copy);
    fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write, error);
    return copy;
}

} // namespace

VaultRemovalReport countVault(Store& store, const VaultInfo& vault)
{
    applySchema(store.database(), taskSchema);
    const ReadScope scope(store.database());
    return countRows(store, vault);
}

VaultRemovalReport removeVault(Store& store, const VaultInfo& vault, bool givenUp)
{
    applySchema(store.database(), taskSchema);
    requireRemovable(store, vault, givenUp);
    const fs::path copy = keepCopy(store, vault);
    try {
        Transaction transaction(store.database());
        requireRemovable(store, vault, givenUp);
        VaultRemovalReport report = countRows(store, vault);
        report.copy = copy;
        for (const Part& part : parts)
            store.database().session() << "DELETE " + rowsOf(part, vault.id);
        store.database().session() << "DELETE FROM file_changes WHERE file_id NOT IN (SELECT id FROM files)";
        dropUnusedTexts(store.database());
        transaction.commit();
        return report;
    } catch (...) {
        std::error_code ignored;
        fs::remove(copy, ignored);
        throw;
    }
}

} // namespace zn::arkin
