#include "arkin/store/Schema.h"

#include "arkin/store/Codes.h"
#include "platform/Sqlite.h"
#include "platform/SqliteRowSums.h"

#include <algorithm>
#include <set>
#include <soci/soci.h>

namespace zn::arkin {

namespace {

int stepOf(Database& database, const std::string& area)
{
    int step = 0;
    database.session() << "SELECT step FROM schema_steps WHERE area = :a", soci::use(area), soci::into(step);
    return step;
}

} // namespace

void applySchema(Database& database, const SchemaArea& area)
{
    const std::string name = area.name;
    const int last = static_cast<int>(area.steps.size());
    if (stepOf(database, name) == last)
        return;
    Transaction transaction(database);
    const int reached = stepOf(database, name);
    if (reached > last)
        throw zn::StatusError(E_ARK_DATABASE,
            "The database was written by a newer version of this program (" + name + " tables, step "
                + std::to_string(reached) + "). Use that version.");
    if (reached < 0)
        throw zn::StatusError(E_ARK_DATABASE,
            "The database is damaged: it counts step " + std::to_string(reached) + " of the " + name
                + " tables. Bring it back from a backup.");
    if (reached == 0)
        database.session() << "INSERT INTO schema_steps (area, step) VALUES (:a, 0)", soci::use(name);
    for (const SchemaStep& step : area.steps.subspan(static_cast<std::size_t>(reached))) {
        for (const char* statement : step.statements)
            database.session() << statement;
        for (const char* table : step.summed)
            zn::sqliteSumRows(database.session(), table);
    }
    database.session() << "UPDATE schema_steps SET step = :s WHERE area = :a", soci::use(last), soci::use(name);
    transaction.commit();
}

bool isUpToDate(Database& database, const SchemaArea& area)
{
    return stepOf(database, area.name) == static_cast<int>(area.steps.size());
}

std::vector<std::string> missingTables(Database& database, const SchemaArea& area)
{
    std::vector<std::string> missing;
    const auto done = static_cast<std::size_t>(std::max(0, stepOf(database, area.name)));
    for (const SchemaStep& step : area.steps.first(std::min(done, area.steps.size()))) {
        for (const std::string_view statement : step.statements) {
            constexpr std::string_view create = "CREATE TABLE ";
            if (!statement.starts_with(create))
                continue;
            const auto name
                = std::string(statement.substr(create.size(), statement.find(' ', create.size()) - create.size()));
            long long rows = 0;
            try {
                database.session() << "SELECT COUNT(*) FROM " << name, soci::into(rows);
            } catch (const soci::soci_error&) {
                missing.push_back(name);
            }
        }
    }
    return missing;
}

std::vector<std::string> changedTables(Database& database, const SchemaArea& area)
{
    std::vector<const char*> statements;
    for (const SchemaStep& step : area.steps)
        statements.insert(statements.end(), step.statements.begin(), step.statements.end());
    return zn::sqliteChangedTables(database.session(), statements);
}

std::vector<std::string> summedTablesOf(const SchemaArea& area)
{
    std::set<std::string> tables;
    for (const SchemaStep& step : area.steps)
        tables.insert(step.summed.begin(), step.summed.end());
    return {tables.begin(), tables.end()};
}

std::vector<std::string> changedRows(Database& database, const SchemaArea& area)
{
    std::vector<std::string> problems;
    for (const std::string& table : summedTablesOf(area))
        for (std::string& problem : zn::sqliteChangedRows(database.session(), table))
            problems.push_back(std::move(problem));
    return problems;
}

} // namespace zn::arkin
