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

/// A sentence for each row that isn't as it was written, and one for a table whose triggers aren't those of
/// `sqliteSumRows`. Raises `soci::soci_error`.
std::vector<std::string> sqliteChangedRows(soci::session& session, const std::string& table);

} // namespace zn
