#pragma once

#include <soci/session.h>
#include <string>
#include <vector>

/// All that is special about SQLite stands in this file pair; everything else is SQL that any server takes.
namespace arkin {

/// Sets a fresh connection up when it is one to SQLite: write-ahead log, a synced log at each commit, checked foreign
/// keys, and waiting while another process writes. Does nothing for other servers.
void prepareSqlite(soci::session& session);

/// Whether the error means that the disk of a SQLite database is full.
bool isSqliteDiskFull(const soci::soci_error& error);

/// What SQLite finds wrong in its own file, a sentence each; nothing for other servers.
std::vector<std::string> sqliteProblems(soci::session& session);

} // namespace arkin
