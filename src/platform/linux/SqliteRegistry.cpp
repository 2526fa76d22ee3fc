#include "platform/linux/SqliteRegistry.h"

#include "base/Status.h"
#include "platform/Sqlite.h"

#include <mutex>
#include <soci/soci.h>
#include <type_traits>

namespace zn {

namespace {

constexpr SqliteSetting setting{.longestWait = std::chrono::minutes(1), .syncCommits = false};

// A key is a row of its own, found by its folded path; its spelling is that of its first creation.
// Hives: 0 user, 1 machine 64-bit, 2 machine 32-bit.
constexpr const char* schema[] = {
    R"sql(CREATE TABLE IF NOT EXISTS registry_key(
            hive INTEGER NOT NULL,
            path TEXT NOT NULL,
            parent TEXT NOT NULL,
            name TEXT NOT NULL,
            PRIMARY KEY(hive, path)) WITHOUT ROWID)sql",
    "CREATE INDEX IF NOT EXISTS registry_key_parent ON registry_key(hive, parent)",
    R"sql(CREATE TABLE IF NOT EXISTS registry_value(
            hive INTEGER NOT NULL,
            path TEXT NOT NULL,
            folded TEXT NOT NULL,
            name TEXT NOT NULL,
            type INTEGER NOT NULL,
            bytes BLOB NOT NULL,
            PRIMARY KEY(hive, path, folded)) WITHOUT ROWID)sql",
};

int hiveNumber(RegistryRoot root, RegistryView view)
{
    if (root == RegistryRoot::User)
        return 0;
    return view == RegistryView::Bits64 ? 1 : 2;
}

/// The key without empty components ("\Software\\Zentrel\" gives "Software\Zentrel").
Text tidy(TextView key)
{
    Text result;
    for (const Text& part : split(key, u'\\')) {
        if (part.empty())
            continue;
        if (!result.empty())
            result += u'\\';
        result += part;
    }
    return result;
}

TextView parentOf(TextView key)
{
    const auto separator = key.rfind(u'\\');
    return separator == TextView::npos ? TextView() : key.substr(0, separator);
}

TextView nameOf(TextView key) { return key.substr(key.rfind(u'\\') + 1); }

/// A key or name as the database looks it up.
std::string lookedUp(TextView name) { return toUtf8(foldCase(name)); }

/// A write transaction: rolled back unless committed.
class WriteTransaction {
public:
    explicit WriteTransaction(soci::session& session)
        : m_session(session)
    {
        // Taking the write lock at once: a read that turns into a write later could not wait for another writer.
        session << "BEGIN IMMEDIATE";
    }
    WriteTransaction(const WriteTransaction&) = delete;
    WriteTransaction& operator=(const WriteTransaction&) = delete;
    ~WriteTransaction()
    {
        if (!m_open)
            return;
        try {
            m_session << "ROLLBACK";
        } catch (const soci::soci_error&) {
            // The database has rolled back by itself, as it does when its disk is full.
        }
    }
    void commit()
    {
        m_session << "COMMIT";
        m_open = false;
    }

private:
    soci::session& m_session;
    bool m_open = true;
};

bool hasKey(soci::session& session, int hive, TextView key)
{
    const std::string path = lookedUp(key);
    int found = 0;
    session << "SELECT 1 FROM registry_key WHERE hive = :h AND path = :p", soci::use(hive), soci::use(path),
        soci::into(found);
    return key.empty() || session.got_data();
}

/// Inside a transaction. `key` is tidy.
void addKey(soci::session& session, int hive, TextView key)
{
    for (; !key.empty(); key = parentOf(key)) {
        const std::string path = lookedUp(key);
        const std::string parent = lookedUp(parentOf(key));
        const std::string name = toUtf8(nameOf(key));
        soci::statement insert = (session.prepare << "INSERT OR IGNORE INTO registry_key VALUES(:h, :p, :u, :n)",
            soci::use(hive), soci::use(path), soci::use(parent), soci::use(name));
        insert.execute(true);
        if (insert.get_affected_rows() == 0)
            return;
    }
}

std::vector<Text> namesBy(soci::session& session, const char* sql, int hive, TextView key)
{
    const std::string path = lookedUp(tidy(key));
    const soci::rowset<std::string> rows = (session.prepare << sql, soci::use(hive), soci::use(path));
    std::vector<Text> result;
    for (const std::string& name : rows)
        result.push_back(toText(name));
    return result;
}

bool hasTables(soci::session& session)
{
    int count = 0;
    session << "SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name IN ('registry_key', 'registry_value')",
        soci::into(count);
    return count == 2;
}

} // namespace

/// The connection, for one thread at a time.
class SqliteRegistry::Store {
public:
    explicit Store(const std::filesystem::path& file)
        : m_file(file)
    {
        use([&](soci::session& session) {
            openDatabase(session, sqliteConnection(file), setting);
            // A registry that exists needs no write lock on opening.
            if (hasTables(session))
                return;
            WriteTransaction transaction(session);
            for (const char* statement : schema)
                session << statement;
            transaction.commit();
        });
    }

    /// Lets `work` use the connection and raises the database's failures as the registry's.
    template <class Work> std::invoke_result_t<Work, soci::session&> use(const Work& work)
    {
        const std::lock_guard lock(m_mutex);
        try {
            return work(m_session);
        } catch (const soci::soci_error& error) {
            throw StatusError(isSqliteDenied(error) ? E_ACCESSDENIED : E_FAIL,
                "The registry '" + m_file.string()
                    + "' failed: " + (isSqliteDiskFull(error) ? "its disk is full" : error.get_error_message()) + ".");
        }
    }

    /// The same in a write transaction.
    template <class Work> void change(const Work& work)
    {
        use([&](soci::session& session) {
            WriteTransaction transaction(session);
            work(session);
            transaction.commit();
        });
    }

private:
    std::filesystem::path m_file;
    soci::session m_session;
    std::mutex m_mutex;
};

SqliteRegistry::SqliteRegistry(const std::filesystem::path& file)
    : m_store(std::make_unique<Store>(file))
{
}

SqliteRegistry::~SqliteRegistry() = default;

bool SqliteRegistry::keyExists(RegistryRoot root, TextView key, RegistryView view)
{
    return m_store->use([&](soci::session& session) { return hasKey(session, hiveNumber(root, view), tidy(key)); });
}

void SqliteRegistry::createKey(RegistryRoot root, TextView key, RegistryView view)
{
    // A key that exists needs no write lock.
    if (!keyExists(root, key, view))
        m_store->change([&](soci::session& session) { addKey(session, hiveNumber(root, view), tidy(key)); });
}

std::vector<Text> SqliteRegistry::subKeys(RegistryRoot root, TextView key, RegistryView view)
{
    return m_store->use([&](soci::session& session) {
        return namesBy(session, "SELECT name FROM registry_key WHERE hive = :h AND parent = :p ORDER BY path",
            hiveNumber(root, view), key);
    });
}

std::vector<Text> SqliteRegistry::valueNames(RegistryRoot root, TextView key, RegistryView view)
{
    return m_store->use([&](soci::session& session) {
        return namesBy(session, "SELECT name FROM registry_value WHERE hive = :h AND path = :p ORDER BY folded",
            hiveNumber(root, view), key);
    });
}

std::optional<RegistryValue> SqliteRegistry::read(RegistryRoot root, TextView key, TextView name, RegistryView view)
{
    return m_store->use([&](soci::session& session) -> std::optional<RegistryValue> {
        const int hive = hiveNumber(root, view);
        const std::string path = lookedUp(tidy(key));
        const std::string folded = lookedUp(name);
        int type = 0;
        soci::blob bytes(session);
        session << "SELECT type, bytes FROM registry_value WHERE hive = :h AND path = :p AND folded = :f",
            soci::use(hive), soci::use(path), soci::use(folded), soci::into(type), soci::into(bytes);
        if (!session.got_data())
            return std::nullopt;
        RegistryValue value{static_cast<RegistryType>(type), std::vector<std::uint8_t>(bytes.get_len())};
        if (!value.bytes.empty())
            bytes.read(0, reinterpret_cast<char*>(value.bytes.data()), value.bytes.size());
        return value;
    });
}

bool SqliteRegistry::write(
    RegistryRoot root, TextView key, TextView name, const RegistryValue& value, RegistryView view)
{
    const int hive = hiveNumber(root, view);
    const Text tidied = tidy(key);
    const std::string path = lookedUp(tidied);
    const std::string folded = lookedUp(name);
    const std::string spelled = toUtf8(name);
    const int type = static_cast<int>(value.type);
    try {
        m_store->change([&](soci::session& session) {
            addKey(session, hive, tidied);
            soci::blob bytes(session);
            if (!value.bytes.empty())
                bytes.write(0, reinterpret_cast<const char*>(value.bytes.data()), value.bytes.size());
            // An empty blob is bound as NULL.
            session << "INSERT INTO registry_value VALUES(:h, :p, :f, :n, :t, COALESCE(:b, zeroblob(0)))"
                       " ON CONFLICT(hive, path, folded) DO UPDATE SET type = excluded.type, bytes = excluded.bytes",
                soci::use(hive), soci::use(path), soci::use(folded), soci::use(spelled), soci::use(type),
                soci::use(bytes);
        });
        return true;
    } catch (const StatusError& failure) {
        if (failure.status() == E_ACCESSDENIED)
            return false;
        throw;
    }
}

void SqliteRegistry::removeValue(RegistryRoot root, TextView key, TextView name, RegistryView view)
{
    const int hive = hiveNumber(root, view);
    const std::string path = lookedUp(tidy(key));
    const std::string folded = lookedUp(name);
    m_store->change([&](soci::session& session) {
        session << "DELETE FROM registry_value WHERE hive = :h AND path = :p AND folded = :f", soci::use(hive),
            soci::use(path), soci::use(folded);
    });
}

void SqliteRegistry::removeKey(RegistryRoot root, TextView key, RegistryView view)
{
    const int hive = hiveNumber(root, view);
    // Everything below begins with the path and a backslash, and "]" is the character behind the backslash.
    const std::string path = lookedUp(tidy(key));
    const std::string first = path + "\\";
    const std::string beyond = path + "]";
    m_store->change([&](soci::session& session) {
        for (const char* table : {"registry_key", "registry_value"})
            session << "DELETE FROM " << table << " WHERE hive = :h AND (path = :p OR (path > :a AND path < :b))",
                soci::use(hive), soci::use(path), soci::use(first), soci::use(beyond);
    });
}

} // namespace zn
