#include "platform/linux/SqliteRegistry.h"

#include "base/Paths.h"
#include "base/Status.h"
#include "platform/linux/SqliteStatement.h"

#include <mutex>

namespace zn {

namespace {

constexpr int busyMilliseconds = 60000;

// A key is a row of its own, found by its folded path; its spelling is that of its first creation.
// Hives: 0 user, 1 machine 64-bit, 2 machine 32-bit.
constexpr const char* schema = R"sql(
        CREATE TABLE IF NOT EXISTS registry_key(
            hive INTEGER NOT NULL,
            path TEXT NOT NULL,
            parent TEXT NOT NULL,
            name TEXT NOT NULL,
            PRIMARY KEY(hive, path)) WITHOUT ROWID;
        CREATE INDEX IF NOT EXISTS registry_key_parent ON registry_key(hive, parent);
        CREATE TABLE IF NOT EXISTS registry_value(
            hive INTEGER NOT NULL,
            path TEXT NOT NULL,
            folded TEXT NOT NULL,
            name TEXT NOT NULL,
            type INTEGER NOT NULL,
            bytes BLOB NOT NULL,
            PRIMARY KEY(hive, path, folded)) WITHOUT ROWID;
    )sql";

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

} // namespace

class SqliteRegistry::Store {
public:
    explicit Store(const std::filesystem::path& file)
    {
        const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
        if (sqlite3_open_v2(file.c_str(), &m_database, flags, nullptr) != SQLITE_OK) {
            const std::string reason = m_database ? sqlite3_errmsg(m_database) : "out of memory";
            sqlite3_close(m_database);
            throw StatusError(E_ACCESSDENIED, "The registry '" + file.string() + "' can't be opened: " + reason + ".");
        }
        try {
            prepare();
        } catch (...) {
            sqlite3_close(m_database);
            throw;
        }
    }
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;
    ~Store() { sqlite3_close(m_database); }

    sqlite3* database() const { return m_database; }
    std::mutex& mutex() { return m_mutex; }

    bool hasKey(int hive, TextView folded)
    {
        return folded.empty()
            || SqliteStatement(m_database, "SELECT 1 FROM registry_key WHERE hive = ? AND path = ?")
                   .bind(hive)
                   .bind(folded)
                   .step();
    }

    /// Inside a transaction. `key` is tidy.
    void addKey(int hive, TextView key)
    {
        for (; !key.empty(); key = parentOf(key)) {
            SqliteStatement(m_database, "INSERT OR IGNORE INTO registry_key VALUES(?, ?, ?, ?)")
                .bind(hive)
                .bind(foldCase(key))
                .bind(foldCase(parentOf(key)))
                .bind(nameOf(key))
                .step();
            if (sqlite3_changes(m_database) == 0)
                return;
        }
    }

    std::vector<Text> names(const char* sql, int hive, TextView key)
    {
        SqliteStatement statement(m_database, sql);
        statement.bind(hive).bind(foldCase(tidy(key)));
        std::vector<Text> result;
        while (statement.step())
            result.push_back(statement.text(0));
        return result;
    }

private:
    void prepare()
    {
        sqlite3_extended_result_codes(m_database, 1);
        sqlite3_busy_timeout(m_database, busyMilliseconds);
        chooseJournal();
        // A registry that exists needs no write lock on opening.
        if (hasTables())
            return;
        SqliteTransaction transaction(m_database);
        sqliteExecute(m_database, schema);
        transaction.commit();
    }

    /// Processes that open a new database at once get in each other's way here, where the busy state isn't waited for.
    void chooseJournal()
    {
        constexpr int pause = 10;
        for (int waited = 0;; waited += pause) {
            try {
                sqliteExecute(m_database, "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL;");
                return;
            } catch (const StatusError&) {
                if ((sqlite3_errcode(m_database) & 0xFF) != SQLITE_BUSY || waited >= busyMilliseconds)
                    throw;
            }
            sqlite3_sleep(pause);
        }
    }

    bool hasTables()
    {
        SqliteStatement tables(m_database,
            "SELECT COUNT(*) FROM sqlite_master WHERE type = 'table' AND name IN ('registry_key', 'registry_value')");
        return tables.step() && tables.number(0) == 2;
    }

    sqlite3* m_database = nullptr;
    std::mutex m_mutex;
};

SqliteRegistry::SqliteRegistry(const std::filesystem::path& file)
    : m_store(std::make_unique<Store>(file))
{
}

SqliteRegistry::~SqliteRegistry() = default;

bool SqliteRegistry::keyExists(RegistryRoot root, TextView key, RegistryView view)
{
    const std::lock_guard lock(m_store->mutex());
    return m_store->hasKey(hiveNumber(root, view), foldCase(tidy(key)));
}

void SqliteRegistry::createKey(RegistryRoot root, TextView key, RegistryView view)
{
    const std::lock_guard lock(m_store->mutex());
    const Text path = tidy(key);
    if (m_store->hasKey(hiveNumber(root, view), foldCase(path)))
        return;
    SqliteTransaction transaction(m_store->database());
    m_store->addKey(hiveNumber(root, view), path);
    transaction.commit();
}

std::vector<Text> SqliteRegistry::subKeys(RegistryRoot root, TextView key, RegistryView view)
{
    const std::lock_guard lock(m_store->mutex());
    return m_store->names(
        "SELECT name FROM registry_key WHERE hive = ? AND parent = ? ORDER BY path", hiveNumber(root, view), key);
}

std::vector<Text> SqliteRegistry::valueNames(RegistryRoot root, TextView key, RegistryView view)
{
    const std::lock_guard lock(m_store->mutex());
    return m_store->names(
        "SELECT name FROM registry_value WHERE hive = ? AND path = ? ORDER BY folded", hiveNumber(root, view), key);
}

std::optional<RegistryValue> SqliteRegistry::read(RegistryRoot root, TextView key, TextView name, RegistryView view)
{
    const std::lock_guard lock(m_store->mutex());
    SqliteStatement statement(
        m_store->database(), "SELECT type, bytes FROM registry_value WHERE hive = ? AND path = ? AND folded = ?");
    statement.bind(hiveNumber(root, view)).bind(foldCase(tidy(key))).bind(foldCase(name));
    if (!statement.step())
        return std::nullopt;
    return RegistryValue{static_cast<RegistryType>(statement.number(0)), statement.bytes(1)};
}

bool SqliteRegistry::write(
    RegistryRoot root, TextView key, TextView name, const RegistryValue& value, RegistryView view)
{
    const std::lock_guard lock(m_store->mutex());
    const int hive = hiveNumber(root, view);
    const Text path = tidy(key);
    try {
        SqliteTransaction transaction(m_store->database());
        m_store->addKey(hive, path);
        SqliteStatement(m_store->database(),
            "INSERT INTO registry_value VALUES(?, ?, ?, ?, ?, ?) ON CONFLICT(hive, path, folded)"
            " DO UPDATE SET type = excluded.type, bytes = excluded.bytes")
            .bind(hive)
            .bind(foldCase(path))
            .bind(foldCase(name))
            .bind(name)
            .bind(static_cast<int>(value.type))
            .bind(value.bytes)
            .step();
        transaction.commit();
        return true;
    } catch (const StatusError& failure) {
        if (failure.status() == E_ACCESSDENIED)
            return false;
        throw;
    }
}

void SqliteRegistry::removeValue(RegistryRoot root, TextView key, TextView name, RegistryView view)
{
    const std::lock_guard lock(m_store->mutex());
    SqliteTransaction transaction(m_store->database());
    SqliteStatement(m_store->database(), "DELETE FROM registry_value WHERE hive = ? AND path = ? AND folded = ?")
        .bind(hiveNumber(root, view))
        .bind(foldCase(tidy(key)))
        .bind(foldCase(name))
        .step();
    transaction.commit();
}

void SqliteRegistry::removeKey(RegistryRoot root, TextView key, RegistryView view)
{
    const std::lock_guard lock(m_store->mutex());
    const Text path = foldCase(tidy(key));
    SqliteTransaction transaction(m_store->database());
    // Everything below begins with the path and a backslash, and "]" is the character behind the backslash.
    for (const char* sql : {"DELETE FROM registry_key WHERE hive = ? AND (path = ? OR (path > ? AND path < ?))",
             "DELETE FROM registry_value WHERE hive = ? AND (path = ? OR (path > ? AND path < ?))"})
        SqliteStatement(m_store->database(), sql)
            .bind(hiveNumber(root, view))
            .bind(path)
            .bind(path + u"\\")
            .bind(path + u"]")
            .step();
    transaction.commit();
}

} // namespace zn
