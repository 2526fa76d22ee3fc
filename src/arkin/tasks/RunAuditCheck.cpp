#include "arkin/store/Schema.h"
#include "arkin/tasks/RunAudit.h"
#include "arkin/tasks/TaskSchema.h"

#include <fmt/format.h>
#include <soci/soci.h>

// Sums tell of rows that were changed; these rules tell of rows that aren't there any more, or don't fit the run.

namespace zn::arkin {

namespace {

/// A statement that finds what must not be. Its rows are the number of a run and another number.
struct Rule {
    const char* sentence;
    const char* sql;
};

const Rule rules[] = {
    {"What was kept of run {0} at its launch is missing.",
        "SELECT r.id, 0 FROM task_runs r WHERE NOT EXISTS (SELECT 1 FROM task_run_audits a WHERE a.run_id = r.id)"},
    {"Run {0} is missing, though what was kept of its launch is there.",
        "SELECT a.run_id, 0 FROM task_run_audits a WHERE NOT EXISTS (SELECT 1 FROM task_runs r WHERE r.id = a.run_id)"},
    {"Run {0} doesn't name the task, the user, the identifier and the time of its launch.",
        "SELECT r.id, 0 FROM task_runs r JOIN task_run_audits a ON a.run_id = r.id WHERE a.guid <> r.guid OR "
        "a.task_name <> r.task_name OR a.user_name <> r.user_name OR a.launched_at <> r.launched_at"},
    {"The settings of run {0} are missing.",
        "SELECT a.run_id, 0 FROM task_run_audits a WHERE a.settings_hash <> '' AND NOT EXISTS "
        "(SELECT 1 FROM task_texts t WHERE t.hash = a.settings_hash)"},
    {"The macro template of run {0} is missing.",
        "SELECT a.run_id, 0 FROM task_run_audits a WHERE a.template_hash <> '' AND NOT EXISTS "
        "(SELECT 1 FROM task_texts t WHERE t.hash = a.template_hash)"},
    {"What was kept of run {0} tells of no worker, though one has begun it.",
        "SELECT r.id, 0 FROM task_runs r JOIN task_run_audits a ON a.run_id = r.id WHERE a.settings_hash <> '' "
        "AND r.started_at <> 0 AND NOT EXISTS (SELECT 1 FROM task_run_works w WHERE w.run_id = r.id)"},
    {"Of run {0}, some macros that its worker {1} carried out are missing.",
        "SELECT w.run_id, w.claim FROM task_run_works w WHERE w.macros <> "
        "(SELECT COUNT(*) FROM task_run_macros m WHERE m.run_id = w.run_id AND m.claim = w.claim)"},
    {"Macros of run {0} belong to its worker {1}, of whom nothing is there.",
        "SELECT DISTINCT m.run_id, m.claim FROM task_run_macros m WHERE NOT EXISTS "
        "(SELECT 1 FROM task_run_works w WHERE w.run_id = m.run_id AND w.claim = m.claim)"},
};

} // namespace

std::vector<std::string> auditProblems(Database& database)
{
    const Transaction snapshot(database, Transaction::Kind::Read);
    std::vector<std::string> problems;
    for (const std::string& table : missingTables(database, taskSchema))
        problems.push_back("The database has no table " + table + ". Bring the database back from a backup.");
    if (!problems.empty() || !isUpToDate(database, taskSchema))
        return problems;
    problems = changedRows(database, taskSchema);
    for (const Rule& rule : rules) {
        int run = 0, number = 0;
        soci::statement statement = (database.session().prepare << rule.sql, soci::into(run), soci::into(number));
        statement.execute();
        while (statement.fetch())
            problems.push_back(fmt::format(fmt::runtime(rule.sentence), run, number)
                + " Somebody has changed the database by other means; look at the run, and bring the database back "
                  "from a backup.");
    }
    return problems;
}

} // namespace zn::arkin
