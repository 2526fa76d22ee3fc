#pragma once

#include <string>
#include <vector>

struct sqlite3;

namespace soci {
class session;
} // namespace soci

/// A checksum beside each row of a table in SQLite, so that a bit that turned on the disk is found. Triggers keep it,
/// with a function that only this program's connections have: other programs can read such a table, and can't change it
/// unnoticed. Other servers have checksums of their own, so nothing happens there.
namespace zn {

/// Gives a connection the function `row_sum(value, …)`: the first 60 bits of the SHA-256 of all values with their
/// types.
void addRowSumFunction(sqlite3* connection);

/// Adds the column `row_sum` to the table where it lacks, sums its rows and has triggers sum what comes. After columns
/// were added to such a table it is called again. Within a transaction. Raises `soci::soci_error`.
void sqliteSumRows(soci::session& session, const std::string& table);

/// A row that isn't as it was written.
struct DamagedRow {
    std::string table;
    long long row = 0; ///< its rowid
    std::string sentence;
};
/// Raises `soci::soci_error`; nothing on other servers.
std::vector<DamagedRow> sqliteDamagedRows(soci::session& session, const std::string& table);

/// The row's values as "column = literal, …", without its sum.
std::string sqliteShownRow(soci::session& session, const DamagedRow& damaged);
/// Makes a damaged row what it was, if `copy`, an older state of the database, has it: its sum, which is kept beside
/// it, tells which row that is, so that a row which was changed after the copy is never set back. One whose sum alone
/// was damaged gets that again. Within a transaction, which is to be undone if it returns false. Raises
/// `soci::soci_error`.
bool sqliteMendRow(soci::session& session, const DamagedRow& damaged, soci::session& copy);
/// Takes the row as it stands for right. Within a transaction. Raises `soci::soci_error`.
void sqliteAcceptRow(soci::session& session, const DamagedRow& damaged);

/// A sentence for each row that isn't as it was written, and one for a table whose triggers aren't those of
/// `sqliteSumRows`. Raises `soci::soci_error`.
std::vector<std::string> sqliteChangedRows(soci::session& session, const std::string& table);

} // namespace zn
