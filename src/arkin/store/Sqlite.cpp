#include "arkin/store/Sqlite.h"

#include <chrono>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>
#include <thread>

namespace arkin {

namespace {

using namespace std::chrono_literals;

// A process that dies gives its locks back, so a longer wait than this means that another one is stuck.
constexpr std::chrono::milliseconds longestWait = 10min;
constexpr std::chrono::milliseconds oneWait = 2ms;

/// SQLite asks this while another process holds what it needs; 0 gives up.
int waitWhileBusy(void*, int tries)
{
    if (tries * oneWait > longestWait)
        return 0;
    std::this_thread::sleep_for(oneWait);
    return 1;
}

/// Changing the journal's mode is the one step that doesn't ask the busy handler.
void enterWriteAheadLog(soci::session& session)
{
    for (int tries = 0;; ++tries) {
        try {
            std::string mode;
            session << "PRAGMA journal_mode = WAL", soci::into(mode);
            return;
        } catch (const soci::sqlite3_soci_error& error) {
            if ((error.result() & 0xFF) != SQLITE_BUSY || !waitWhileBusy(nullptr, tries))
                throw;
        }
    }
}

} // namespace

void prepareSqlite(soci::session& session)
{
    if (session.get_backend_name() != "sqlite3")
        return;
    auto* backend = static_cast<soci::sqlite3_session_backend*>(session.get_backend());
    sqlite_api::sqlite3_busy_handler(backend->conn_, waitWhileBusy, nullptr);
    enterWriteAheadLog(session);
    // With FULL the log is synced at each commit, which is what lets a check-in survive a loss of power.
    session << "PRAGMA synchronous = FULL";
    session << "PRAGMA foreign_keys = ON";
}

std::vector<std::string> sqliteProblems(soci::session& session)
{
    if (session.get_backend_name() != "sqlite3")
        return {};
    std::vector<std::string> problems;
    std::string line;
    soci::statement statement = (session.prepare << "PRAGMA integrity_check", soci::into(line));
    statement.execute();
    while (statement.fetch()) {
        if (line != "ok")
            problems.push_back("The database file is damaged: " + line + ".");
    }
    return problems;
}

bool isSqliteDiskFull(const soci::soci_error& error)
{
    const auto* sqlite = dynamic_cast<const soci::sqlite3_soci_error*>(&error);
    return sqlite && (sqlite->result() & 0xFF) == SQLITE_FULL;
}

} // namespace arkin
