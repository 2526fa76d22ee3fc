#include "platform/Sqlite.h"

#include "base/Status.h"
#include "platform/PrivateFiles.h"
#include "platform/SqliteRowSums.h"

#include <map>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>
#include <string_view>
#include <system_error>
#include <thread>

namespace zn {

namespace {

using std::chrono::milliseconds;

constexpr std::string_view scheme = "sqlite3://";
constexpr milliseconds oneWait{2};

/// SQLite asks this while another process holds what it needs; 0 gives up. `context` is the longest wait.
int waitWhileBusy(void* context, int tries)
{
    if (tries * oneWait > milliseconds(reinterpret_cast<std::intptr_t>(context)))
        return 0;
    std::this_thread::sleep_for(oneWait);
    return 1;
}

/// The error's number without its extension; 0 of another server's.
int numberOf(const soci::soci_error& error)
{
    const auto* sqlite = dynamic_cast<const soci::sqlite3_soci_error*>(&error);
    return sqlite ? sqlite->result() & 0xFF : SQLITE_OK;
}

/// Changing the journal's mode is the one step that doesn't ask the busy handler.
void enterWriteAheadLog(soci::session& session, void* longestWait)
{
    for (int tries = 0;; ++tries) {
        try {
            std::string mode;
            session << "PRAGMA journal_mode = WAL", soci::into(mode);
            return;
        } catch (const soci::soci_error& error) {
            if (numberOf(error) != SQLITE_BUSY || !waitWhileBusy(longestWait, tries))
                throw;
        }
    }
}

/// Before SQLite makes it as it likes: what a vault or a registry holds is nobody else's. Its journals take the file's
/// mode. A folder that takes no file is SQLite's to complain of.
void closeToOthers(std::string_view parameters)
{
    const std::size_t begin = parameters.find('"') + 1;
    const std::filesystem::path file = parameters.substr(begin, parameters.rfind('"') - begin);
    try {
        makePrivateFile(file, sharingOf(file.parent_path()));
    } catch (const std::system_error&) {
        return;
    }
}

} // namespace

std::string sqliteConnection(const std::filesystem::path& file)
{
    if (file.string().find('"') != std::string::npos)
        throw StatusError(E_INVALIDARG,
            "The database cannot stand in a folder with a quotation mark in its name: " + file.string()
                + ". Choose another folder.");
    return std::string(scheme) + "db=\"" + file.string() + "\"";
}

void openDatabase(soci::session& session, const std::string& connection, const SqliteSetting& setting)
{
    if (!connection.starts_with(scheme)) {
        session.open(connection);
        return;
    }
    // The backend itself, not its name: names are registered once a process, and a module that a program loads has
    // this file once more.
    closeToOthers(std::string_view(connection).substr(scheme.size()));
    session.open(*soci::factory_sqlite3(), connection.substr(scheme.size()));
    auto* backend = static_cast<soci::sqlite3_session_backend*>(session.get_backend());
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the handler's argument is a number in a pointer's clothes
    auto* longestWait = reinterpret_cast<void*>(static_cast<std::intptr_t>(setting.longestWait.count()));
    sqlite_api::sqlite3_extended_result_codes(backend->conn_, 1);
    sqlite_api::sqlite3_busy_handler(backend->conn_, waitWhileBusy, longestWait);
    addRowSumFunction(backend->conn_);
    enterWriteAheadLog(session, longestWait);
    // With FULL the log is synced at each commit.
    session << (setting.syncCommits ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = NORMAL");
    session << "PRAGMA foreign_keys = ON";
}

bool isSqliteDiskFull(const soci::soci_error& error)
{
    const auto* sqlite = dynamic_cast<const soci::sqlite3_soci_error*>(&error);
    // The index of the write-ahead log is the first that finds no room.
    return numberOf(error) == SQLITE_FULL || (sqlite && sqlite->result() == SQLITE_IOERR_SHMSIZE);
}

void copyDatabase(soci::session& session, const std::filesystem::path& copy)
{
    if (session.get_backend_name() != "sqlite3")
        throw StatusError(E_NOTIMPL,
            "Only a vault whose database is a SQLite file can be backed up here; use the database server's own "
            "backup.");
    const std::string file = copy.string();
    session << "VACUUM INTO :f", soci::use(file);
}

void openCopy(soci::session& session, const std::filesystem::path& copy)
{
    session.open(*soci::factory_sqlite3(), sqliteConnection(copy).substr(scheme.size()) + " readonly=true");
}

bool isSqliteDenied(const soci::soci_error& error)
{
    const int number = numberOf(error);
    return number == SQLITE_READONLY || number == SQLITE_PERM || number == SQLITE_CANTOPEN;
}

namespace {

/// The columns of tables and indexes, as they are understood: their texts differ between versions of SQLite.
constexpr const char* columnsOfAll
    = "SELECT m.name, m.type || ' ' || m.tbl_name || ' ' || COALESCE((SELECT GROUP_CONCAT(c.name || ' ' || c.type || "
      "c.\"notnull\" || COALESCE(c.dflt_value, '') || c.pk) FROM pragma_table_info(m.name) c WHERE c.name <> "
      "'row_sum'), '') || "
      "COALESCE((SELECT GROUP_CONCAT(i.name || i.\"desc\" || i.coll) FROM pragma_index_info(m.name) n "
      "JOIN pragma_index_xinfo(m.name) i ON i.seqno = n.seqno), '') FROM sqlite_master m WHERE m.sql IS NOT NULL";

std::map<std::string, std::string> columnsOf(soci::session& session)
{
    std::map<std::string, std::string> found;
    std::string name, made;
    soci::statement statement = (session.prepare << columnsOfAll, soci::into(name), soci::into(made));
    statement.execute();
    while (statement.fetch())
        found[name] = made;
    return found;
}

} // namespace

std::vector<std::string> sqliteChangedTables(soci::session& session, const std::vector<const char*>& statements)
{
    if (session.get_backend_name() != "sqlite3")
        return {};
    soci::session model(*soci::factory_sqlite3(), "db=:memory:");
    for (const char* statement : statements)
        model << statement;
    const auto found = columnsOf(session);
    std::vector<std::string> changed;
    for (const auto& [name, made] : columnsOf(model)) {
        const auto known = found.find(name);
        if (known == found.end() || known->second != made)
            changed.push_back(name);
    }
    return changed;
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

} // namespace zn
