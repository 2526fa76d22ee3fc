#include "platform/SqliteRowSums.h"

#include "platform/Sha256.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <map>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>
#include <span>

namespace zn {

namespace {

using namespace sqlite_api;

constexpr const char* column = "row_sum";

bool isSqlite(soci::session& session) { return session.get_backend_name() == "sqlite3"; }

/// Type, length and bytes of a value, so that no two rows of values look alike.
void append(std::string& bytes, sqlite3_value* value)
{
    const int type = sqlite3_value_type(value);
    const auto* content = static_cast<const char*>(sqlite3_value_blob(value)); // numbers become their text
    const int size = sqlite3_value_bytes(value);
    bytes += fmt::format("{}:{}:", type, size);
    if (size > 0)
        bytes.append(content, static_cast<std::size_t>(size));
}

void rowSum(sqlite3_context* context, int count, sqlite3_value** values)
{
    try {
        std::string bytes;
        for (sqlite3_value* value : std::span(values, static_cast<std::size_t>(count)))
            append(bytes, value);
        Sha256 hash;
        hash.update(bytes);
        constexpr std::size_t digits = 15;
        sqlite3_result_int64(context, std::stoll(hash.finish().substr(0, digits), nullptr, 16));
    } catch (const std::exception& error) {
        sqlite3_result_error(context, error.what(), -1);
    }
}

std::vector<std::string> textsOf(soci::session& session, const std::string& sql)
{
    std::vector<std::string> texts;
    std::string text;
    soci::statement statement = (session.prepare << sql, soci::into(text));
    statement.execute();
    while (statement.fetch())
        texts.push_back(text);
    return texts;
}

std::vector<std::string> summedColumns(soci::session& session, const std::string& table)
{
    return textsOf(session,
        fmt::format("SELECT name FROM pragma_table_info('{}') WHERE name <> '{}' ORDER BY cid", table, column));
}

/// Name to statement.
std::map<std::string, std::string> triggersOf(const std::string& table, const std::vector<std::string>& columns)
{
    const auto trigger = [&](const char* kind, const std::string& event) {
        const std::string name = fmt::format("{}_{}_{}", column, kind, table);
        return std::pair(name,
            fmt::format("CREATE TRIGGER {} AFTER {} ON {} BEGIN UPDATE {} SET {} = row_sum(NEW.{}) "
                        "WHERE rowid = NEW.rowid; END",
                name, event, table, table, column, fmt::join(columns, ", NEW.")));
    };
    return {trigger("new", "INSERT"), trigger("changed", fmt::format("UPDATE OF {}", fmt::join(columns, ", ")))};
}

/// An SQL expression that makes the right side of an UPDATE's SET of a row.
std::string assignments(const std::vector<std::string>& columns)
{
    std::string parts;
    for (const std::string& name : columns)
        parts += fmt::format("{}'{} = ' || quote({})", parts.empty() ? "" : " || ', ' || ", name, name);
    return parts;
}

/// -1, which no row has, stands for NULL.
long long sumOf(soci::session& session, const DamagedRow& damaged, const std::string& expression)
{
    long long sum = 0;
    session << fmt::format("SELECT COALESCE({}, -1) FROM {} WHERE rowid = {}", expression, damaged.table, damaged.row),
        soci::into(sum);
    return sum;
}

} // namespace

void addRowSumFunction(sqlite3* connection)
{
    sqlite3_create_function_v2(connection, "row_sum", -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
        nullptr, rowSum, nullptr, nullptr, nullptr);
}

void sqliteSumRows(soci::session& session, const std::string& table)
{
    if (!isSqlite(session))
        return;
    const auto columns = summedColumns(session, table);
    const auto all = textsOf(session, fmt::format("SELECT name FROM pragma_table_info('{}')", table));
    if (all.size() == columns.size())
        session << fmt::format("ALTER TABLE {} ADD COLUMN {} BIGINT", table, column);
    for (const auto& [name, statement] : triggersOf(table, columns)) {
        session << "DROP TRIGGER IF EXISTS " + name;
        session << statement;
    }
    session << fmt::format("UPDATE {} SET {} = row_sum({})", table, column, fmt::join(columns, ", "));
}

std::vector<std::string> sqliteChangedRows(soci::session& session, const std::string& table)
{
    if (!isSqlite(session))
        return {};
    std::vector<std::string> problems;
    const auto columns = summedColumns(session, table);
    for (const auto& [name, statement] : triggersOf(table, columns))
        if (textsOf(session, "SELECT sql FROM sqlite_master WHERE type = 'trigger' AND name = '" + name + "'")
            != std::vector{statement})
            problems.push_back("The database doesn't keep the sums of its table " + table
                + " as it should. Bring the database back from a backup.");
    for (DamagedRow& damaged : sqliteDamagedRows(session, table))
        problems.push_back(std::move(damaged.sentence));
    return problems;
}

std::vector<DamagedRow> sqliteDamagedRows(soci::session& session, const std::string& table)
{
    if (!isSqlite(session))
        return {};
    const auto columns = summedColumns(session, table);
    std::vector<DamagedRow> damaged;
    long long row = 0;
    std::string key;
    soci::statement statement
        = (session.prepare << fmt::format("SELECT rowid, '{} ' || {} FROM {} WHERE {} IS NOT row_sum({})",
               columns.front(), columns.front(), table, column, fmt::join(columns, ", ")),
            soci::into(row), soci::into(key));
    statement.execute();
    while (statement.fetch())
        damaged.push_back({table, row,
            fmt::format("The table {} isn't as it was written in its row {} ({}). Look at it, and bring the database "
                        "back from a backup.",
                table, row, key)});
    return damaged;
}

std::string sqliteShownRow(soci::session& session, const DamagedRow& damaged)
{
    const auto shown = textsOf(session,
        fmt::format("SELECT {} FROM {} WHERE rowid = {}", assignments(summedColumns(session, damaged.table)),
            damaged.table, damaged.row));
    return shown.empty() ? std::string() : shown.front();
}

bool sqliteMendRow(soci::session& session, const DamagedRow& damaged, soci::session& copy)
{
    const auto columns = summedColumns(session, damaged.table);
    if (summedColumns(copy, damaged.table) != columns)
        return false; // made by another version of the program
    const std::string sumNow = fmt::format("row_sum({})", fmt::join(columns, ", "));
    const auto rowsWith = [&](long long sum) {
        return textsOf(
            copy, fmt::format("SELECT {} FROM {} WHERE {} = {}", assignments(columns), damaged.table, column, sum));
    };
    const long long written = sumOf(session, damaged, column);
    if (const auto before = rowsWith(written); before.size() == 1) {
        session << fmt::format("UPDATE {} SET {} WHERE rowid = {}", damaged.table, before.front(), damaged.row);
        long long mended = 0;
        session << fmt::format(
            "SELECT COUNT(*) FROM {} WHERE {} = {} AND {} = {}", damaged.table, column, written, sumNow, written),
            soci::into(mended);
        return mended == 1;
    }
    const auto same = rowsWith(sumOf(session, damaged, sumNow));
    if (same.size() != 1 || same.front() != sqliteShownRow(session, damaged))
        return false;
    sqliteAcceptRow(session, damaged);
    return true;
}

void sqliteAcceptRow(soci::session& session, const DamagedRow& damaged)
{
    session << fmt::format("UPDATE {} SET {} = row_sum({}) WHERE rowid = {}", damaged.table, column,
        fmt::join(summedColumns(session, damaged.table), ", "), damaged.row);
}

} // namespace zn
