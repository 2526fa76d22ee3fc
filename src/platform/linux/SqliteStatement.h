#pragma once

#include "base/Text.h"

#include <cstdint>
#include <sqlite3.h>
#include <string>
#include <vector>

namespace zn {

/// One SQL statement, bound from left to right and stepped. Raises `StatusError` with the database's words.
class SqliteStatement {
public:
    SqliteStatement(sqlite3* database, const char* sql);
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;
    ~SqliteStatement();

    SqliteStatement& bind(int value);
    SqliteStatement& bind(TextView value);
    SqliteStatement& bind(const std::vector<std::uint8_t>& value);

    /// True while there is a row.
    bool step();
    int number(int column) const;
    Text text(int column) const;
    std::vector<std::uint8_t> bytes(int column) const;

private:
    sqlite3* m_database;
    sqlite3_stmt* m_statement = nullptr;
    int m_bound = 0;
};

/// Runs one or more statements that give no rows.
void sqliteExecute(sqlite3* database, const char* sql);

/// A write transaction: rolled back unless committed.
class SqliteTransaction {
public:
    explicit SqliteTransaction(sqlite3* database);
    SqliteTransaction(const SqliteTransaction&) = delete;
    SqliteTransaction& operator=(const SqliteTransaction&) = delete;
    ~SqliteTransaction();
    void commit();

private:
    sqlite3* m_database;
    bool m_open = true;
};

} // namespace zn
