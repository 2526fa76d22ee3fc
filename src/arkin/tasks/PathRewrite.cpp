#include "arkin/tasks/PathRewrite.h"

#include "base/Paths.h"
#include "contracts/host/Codes.h"

#include <fmt/format.h>
#include <set>
#include <soci/soci.h>

namespace zn::arkin {

using soci::into;
using soci::use;

PathRewrite::PathRewrite(Database& database, std::int32_t vaultId, zn::TextView from, zn::TextView to)
    : m_database(database)
    , m_vaultId(vaultId)
    , m_from(from)
    , m_to(to)
{
}

std::optional<std::string> PathRewrite::rewritten(const std::string& path) const
{
    const zn::Text text = zn::toText(path);
    if (!zn::isInFolder(text, m_from))
        return {};
    return zn::toUtf8(m_to + text.substr(m_from.size()));
}

std::vector<PathRewrite::Change> PathRewrite::rewrite(const std::string& rows, const std::string& update)
{
    auto& session = m_database.session();
    Change row;
    std::vector<Change> changes;
    soci::statement select = (session.prepare << rows, into(row.owner), into(row.name), into(row.path));
    select.execute();
    while (select.fetch()) {
        if (auto path = rewritten(row.path))
            changes.push_back({row.owner, row.name, std::move(*path)});
    }
    for (const Change& change : changes)
        session << update, use(change.path), use(change.owner), use(change.name);
    return changes;
}

std::vector<std::string> PathRewrite::taskVariables()
{
    const auto changes = rewrite(
        fmt::format("SELECT task_id, name, value_text FROM task_variables WHERE task_id IN (SELECT id FROM tasks WHERE "
                    "vault_id = {}) ORDER BY task_id, name",
            m_vaultId),
        "UPDATE task_variables SET value_text = :t WHERE task_id = :i AND name = :n");
    std::vector<std::string> told;
    std::string task;
    for (const Change& change : changes) {
        m_database.session() << "SELECT name FROM tasks WHERE id = :i", use(change.owner), into(task);
        told.push_back(task + ": " + change.name);
    }
    return told;
}

std::int32_t PathRewrite::schedules()
{
    return ownersOf(rewrite(
        fmt::format(
            "SELECT schedule_id, CAST(position AS VARCHAR(20)), path FROM task_schedule_items WHERE schedule_id "
            "IN (SELECT id FROM task_schedules WHERE vault_id = {})",
            m_vaultId),
        "UPDATE task_schedule_items SET path = :t WHERE schedule_id = :i AND position = CAST(:p AS INTEGER)"));
}

std::int32_t PathRewrite::waitingRuns()
{
    const std::string waiting = fmt::format("(SELECT id FROM task_runs WHERE vault_id = {} AND state = {})", m_vaultId,
        static_cast<std::int32_t>(zn::TaskRunState::Queued));
    auto changes
        = rewrite("SELECT run_id, CAST(position AS VARCHAR(20)), path FROM task_run_items WHERE run_id IN " + waiting,
            "UPDATE task_run_items SET path = :t WHERE run_id = :i AND position = CAST(:p AS INTEGER)");
    const auto variables = rewrite("SELECT run_id, name, value_text FROM task_run_variables WHERE run_id IN " + waiting,
        "UPDATE task_run_variables SET value_text = :t WHERE run_id = :i AND name = :n");
    changes.insert(changes.end(), variables.begin(), variables.end());
    return ownersOf(changes);
}

std::int32_t PathRewrite::ownersOf(const std::vector<Change>& changes)
{
    std::set<std::int32_t> owners;
    for (const Change& change : changes)
        owners.insert(change.owner);
    return static_cast<std::int32_t>(owners.size());
}

} // namespace zn::arkin
