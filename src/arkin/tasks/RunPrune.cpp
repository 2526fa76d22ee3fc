#include "arkin/tasks/RunPrune.h"

#include "arkin/store/Database.h"
#include "arkin/tasks/RunStore.h"
#include "platform/Registry.h"

#include <fmt/format.h>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

constexpr int defaultDays = 90;
constexpr const char* children[] = {"task_run_variables", "task_run_items", "task_run_documents", "task_run_messages",
    "task_run_paths", "task_run_results", "task_run_audits", "task_run_works", "task_run_macros"};

} // namespace

int daysRunsAreKept(zn::Registry& registry)
{
    const auto value = registry.read(zn::RegistryRoot::Machine, u"Software\\Arkin", u"KeepRunsDays", {});
    const auto days = value ? value->asNumber() : std::nullopt;
    return days ? static_cast<int>(*days) : defaultDays;
}

void dropUnusedTexts(Database& database)
{
    database.session() << "DELETE FROM task_texts WHERE hash NOT IN (SELECT template_hash FROM task_run_audits) AND "
                          "hash NOT IN (SELECT settings_hash FROM task_run_audits)";
}

int pruneRuns(Database& database, std::int32_t vaultId, std::int64_t before)
{
    const long long time = before;
    const std::string old
        = fmt::format("FROM task_runs WHERE vault_id = :v AND ended_at < :t AND state IN ({}, {}, {}) "
                      "AND NOT EXISTS (SELECT 1 FROM check_outs WHERE run_id = task_runs.id)",
            static_cast<int>(TaskRunState::Finished), static_cast<int>(TaskRunState::Cancelled),
            static_cast<int>(TaskRunState::FinishedWithErrors));
    Transaction transaction(database);
    auto& session = database.session();
    int count = 0;
    session << "SELECT COUNT(*) " + old, soci::use(vaultId), soci::use(time), soci::into(count);
    for (const char* table : children)
        session << fmt::format("DELETE FROM {} WHERE run_id IN (SELECT id {})", table, old), soci::use(vaultId),
            soci::use(time);
    session << "DELETE " + old, soci::use(vaultId), soci::use(time);
    dropUnusedTexts(database);
    transaction.commit();
    return count;
}

} // namespace zn::arkin
