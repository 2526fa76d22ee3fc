#include "arkin/store/Database.h"

#include "arkin/store/Codes.h"
#include "platform/Sqlite.h"

#include <soci/soci.h>

namespace zn::arkin {

namespace {

/// `write_turn` is the one row that every write transaction changes first. It makes writers take turns on any server,
/// and a SQLite transaction that begins with a write can wait for its turn instead of failing half-way.
const char* const foundation[] = {
    "CREATE TABLE IF NOT EXISTS write_turn (id INTEGER NOT NULL PRIMARY KEY, turn BIGINT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS next_ids (sequence VARCHAR(60) NOT NULL PRIMARY KEY, next_id BIGINT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS schema_steps (area VARCHAR(60) NOT NULL PRIMARY KEY, step INTEGER NOT NULL)",
    "INSERT INTO write_turn (id, turn) SELECT 1, 0 WHERE NOT EXISTS (SELECT 1 FROM write_turn)",
};

constexpr zn::SqliteSetting setting{.longestWait = std::chrono::minutes(10), .syncCommits = true};

} // namespace

Database::Database(const std::string& connection)
    : m_connection(connection)
    , m_session(std::make_unique<soci::session>())
{
    try {
        zn::openDatabase(session(), connection, setting);
        for (const char* statement : foundation)
            session() << statement;
    } catch (const soci::soci_error& error) {
        if (zn::isSqliteDiskFull(error))
            throw;
        throw zn::StatusError(
            E_ARK_DATABASE, "The vault's database could not be opened: " + error.get_error_message() + ".");
    }
}

Database::~Database() = default;

std::int32_t Database::allocateIds(const std::string& sequence, std::int32_t count)
{
    if (!m_inTransaction)
        throw zn::StatusError(zn::E_UNEXPECTED, "Ids are given inside a transaction only.");
    long long next = 1;
    session() << "SELECT next_id FROM next_ids WHERE sequence = :s", soci::use(sequence), soci::into(next);
    const bool known = session().got_data();
    const long long after = next + count;
    if (after > INT32_MAX)
        throw zn::StatusError(E_ARK_DATABASE, "The vault has no free number left for " + sequence + ".");
    if (known)
        session() << "UPDATE next_ids SET next_id = :n WHERE sequence = :s", soci::use(after), soci::use(sequence);
    else
        session() << "INSERT INTO next_ids (sequence, next_id) VALUES (:s, :n)", soci::use(sequence), soci::use(after);
    return static_cast<std::int32_t>(next);
}

std::int64_t Database::turn()
{
    long long turn = 0;
    session() << "SELECT turn FROM write_turn", soci::into(turn);
    return turn;
}

Transaction::Transaction(Database& database, Kind kind)
    : m_database(database)
{
    if (database.m_inTransaction)
        throw zn::StatusError(zn::E_UNEXPECTED, "A transaction is open on this connection already.");
    database.session().begin();
    database.m_inTransaction = m_open = true;
    if (kind == Kind::Read)
        return;
    try {
        database.session() << "UPDATE write_turn SET turn = turn + 1";
        if (database.m_fence)
            database.m_fence();
    } catch (...) {
        undo();
        throw;
    }
}

Transaction::~Transaction()
{
    if (m_open)
        undo();
}

void Transaction::undo() noexcept
{
    m_open = m_database.m_inTransaction = false;
    try {
        m_database.session().rollback();
    } catch (const soci::soci_error&) {
        // The server has rolled back by itself, as it does when its disk is full: there is nothing left to undo.
    }
}

void Transaction::commit()
{
    try {
        m_database.session().commit();
    } catch (const soci::soci_error& error) {
        if (zn::isSqliteDiskFull(error))
            throw;
        // What was written before the failing sync is found and taken for whole by whoever opens the database next.
        throw zn::StatusError(E_ARK_DATABASE,
            "The vault's database reported a failure: " + error.get_error_message()
                + ". The change may have reached the disk all the same, so look before you repeat it.");
    }
    m_open = m_database.m_inTransaction = false;
}

} // namespace zn::arkin
