#pragma once

#include "base/Status.h"
#include "base/Text.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace soci {
class session;
}

namespace zn::arkin {

/// One connection to the vault's database server. A connection belongs to one thread; a second thread (a heartbeat)
/// opens its own. Statements run on `session()`, for
/// which a source file includes <soci/soci.h>, and raise `soci::soci_error`, which `currentFailure` turns into a
/// sentence. Texts are UTF-8 in the database.
class Database {
public:
    /// `connection` is "backend://parameters", such as `zn::sqliteConnection` gives. Creates what `Transaction` and
    /// `allocateIds` need; each area creates its own tables by `applySchema`.
    /// Raises `StatusError` E_ARK_DATABASE with a sentence when the database can't be opened.
    explicit Database(const std::string& connection);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    soci::session& session() { return *m_session; }
    const std::string& connection() const { return m_connection; }

    /// Takes `count` successive numbers of the named row of ids (1, 2, 3 …) and returns the first.
    /// Only inside a write transaction; numbers of a transaction that is rolled back are given again.
    std::int32_t allocateIds(const std::string& sequence, std::int32_t count = 1);

    /// How many write transactions there were: as long as it stays, nothing has changed.
    std::int64_t turn();

    /// From now on each write transaction begins with this, and isn't begun if it raises: whoever has lost the right to
    /// write, as a worker whose run went to another one, writes nothing, wherever he is. An empty function ends it.
    void fenceWrites(std::function<void()> fence) { m_fence = std::move(fence); }

private:
    friend class Transaction;
    friend class ReadScope;
    std::string m_connection;
    std::unique_ptr<soci::session> m_session;
    bool m_inTransaction = false;
    std::function<void()> m_fence;
};

/// A transaction that is undone unless it is committed.
class Transaction {
public:
    enum class Kind {
        /// Writers take turns: the constructor waits until no other write transaction is open, so what is read inside
        /// stays true until the commit.
        Write,
        /// Sees one state of the database for all of its reads.
        Read,
    };

    /// Raises `StatusError` E_UNEXPECTED if the connection has an open transaction already.
    explicit Transaction(Database& database, Kind kind = Kind::Write);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    /// Makes the work durable: after the return it survives a loss of power.
    void commit();

private:
    void undo() noexcept;

    Database& m_database;
    bool m_open = false;
};

/// One state of the database for many small reads, without asking for the database's locks at each of them. Does
/// nothing inside a transaction.
class ReadScope {
public:
    explicit ReadScope(Database& database)
    {
        if (!database.m_inTransaction)
            m_transaction.emplace(database, Transaction::Kind::Read);
    }

private:
    std::optional<Transaction> m_transaction;
};

} // namespace zn::arkin
