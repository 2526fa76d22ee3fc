#include "platform/linux/SqliteStatement.h"

#include "base/Status.h"

namespace zn {

namespace {

[[noreturn]] void raise(sqlite3* database)
{
    const int code = sqlite3_errcode(database) & 0xFF;
    const bool denied = code == SQLITE_READONLY || code == SQLITE_PERM || code == SQLITE_CANTOPEN;
    const char* file = sqlite3_db_filename(database, "main");
    throw StatusError(denied ? E_ACCESSDENIED : E_FAIL,
        "The database '" + std::string(file ? file : "") + "' failed: " + sqlite3_errmsg(database) + ".");
}

} // namespace

SqliteStatement::SqliteStatement(sqlite3* database, const char* sql)
    : m_database(database)
{
    if (sqlite3_prepare_v2(database, sql, -1, &m_statement, nullptr) != SQLITE_OK)
        raise(database);
}

SqliteStatement::~SqliteStatement() { sqlite3_finalize(m_statement); }

SqliteStatement& SqliteStatement::bind(int value)
{
    if (sqlite3_bind_int(m_statement, ++m_bound, value) != SQLITE_OK)
        raise(m_database);
    return *this;
}

SqliteStatement& SqliteStatement::bind(TextView value)
{
    const std::string utf8 = toUtf8(value);
    if (sqlite3_bind_text(m_statement, ++m_bound, utf8.data(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT)
        != SQLITE_OK)
        raise(m_database);
    return *this;
}

SqliteStatement& SqliteStatement::bind(const std::vector<std::uint8_t>& value)
{
    // A null pointer would bind NULL instead of an empty blob.
    const int result = value.empty()
        ? sqlite3_bind_zeroblob(m_statement, ++m_bound, 0)
        : sqlite3_bind_blob(m_statement, ++m_bound, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    if (result != SQLITE_OK)
        raise(m_database);
    return *this;
}

bool SqliteStatement::step()
{
    const int result = sqlite3_step(m_statement);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        raise(m_database);
    return result == SQLITE_ROW;
}

int SqliteStatement::number(int column) const { return sqlite3_column_int(m_statement, column); }

Text SqliteStatement::text(int column) const
{
    const unsigned char* utf8 = sqlite3_column_text(m_statement, column);
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
    return utf8 ? toText(std::string_view(reinterpret_cast<const char*>(utf8), size)) : Text();
}

std::vector<std::uint8_t> SqliteStatement::bytes(int column) const
{
    const auto* data = static_cast<const std::uint8_t*>(sqlite3_column_blob(m_statement, column));
    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column));
    return data ? std::vector<std::uint8_t>(data, data + size) : std::vector<std::uint8_t>();
}

void sqliteExecute(sqlite3* database, const char* sql)
{
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        raise(database);
}

SqliteTransaction::SqliteTransaction(sqlite3* database)
    : m_database(database)
{
    // Taking the write lock at once: a read that turns into a write later could not wait for another writer.
    sqliteExecute(database, "BEGIN IMMEDIATE");
}

SqliteTransaction::~SqliteTransaction()
{
    if (m_open)
        sqlite3_exec(m_database, "ROLLBACK", nullptr, nullptr, nullptr);
}

void SqliteTransaction::commit()
{
    sqliteExecute(m_database, "COMMIT");
    m_open = false;
}

} // namespace zn
