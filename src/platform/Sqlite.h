#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace soci {
class session;
class soci_error;
} // namespace soci

/// All that is special about SQLite stands in this file pair; everything else is SQL that any server takes.
namespace zn {

/// The connection string of a SQLite file, which is created when it is missing. Raises `StatusError` E_INVALIDARG with
/// a sentence for a name that can't be written there.
std::string sqliteConnection(const std::filesystem::path& file);

struct SqliteSetting {
    /// For what another process holds. A process that dies gives its locks back, so whoever waits longer waits for one
    /// that is stuck.
    std::chrono::milliseconds longestWait;
    /// Each commit outlives a loss of power. If not, the last ones may be undone then, but none by half.
    bool syncCommits;
};

/// Opens a connection ("backend://parameters"). One to SQLite gets a write-ahead log, checked foreign keys and waiting
/// as the setting says; other servers are left as they are. Raises `soci::soci_error`.
void openDatabase(soci::session& session, const std::string& connection, const SqliteSetting& setting);

/// Writes the database as it is at this moment to the file `copy`, which is new or empty, while others go on working.
/// The copy isn't synced. Raises `soci::soci_error`, also when the database is found damaged, and `StatusError`
/// E_NOTIMPL for other servers.
void copyDatabase(soci::session& session, const std::filesystem::path& copy);
/// Opens such a copy to be read: nothing in it or beside it changes. Raises `soci::soci_error`.
void openCopy(soci::session& session, const std::filesystem::path& copy);

/// Whether the error means that the disk of a SQLite database is full.
bool isSqliteDiskFull(const soci::soci_error& error);
/// Whether it means that this user may not open or change the file.
bool isSqliteDenied(const soci::soci_error& error);

/// The tables and indexes that these statements make and that the database lacks or has with other columns; nothing for
/// other servers.
std::vector<std::string> sqliteChangedTables(soci::session& session, const std::vector<const char*>& statements);

/// What SQLite finds wrong in its own file, a sentence each; nothing for other servers.
std::vector<std::string> sqliteProblems(soci::session& session);

} // namespace zn
