#include "arkin/store/StoreCheck.h"
#include "arkin/store/Schema.h"
#include "platform/Sqlite.h"

#include <fmt/format.h>
#include <soci/soci.h>
#include <unordered_set>

namespace zn::arkin {

namespace {

/// A statement that finds what must not be. Its rows are a name and two numbers, which the sentence shows.
struct Rule {
    const char* sentence;
    const char* sql;
};

const Rule rules[] = {
    {"The file \"{0}\" (number {1}) has no version.",
        "SELECT f.name, f.id, 0 FROM files f WHERE NOT EXISTS (SELECT 1 FROM versions v WHERE v.file_id = f.id)"},
    {"The file \"{0}\" (number {1}) counts version {2} as its latest, which it isn't.",
        "SELECT f.name, f.id, f.latest_version FROM files f "
        "WHERE f.latest_version <> (SELECT MAX(v.version) FROM versions v WHERE v.file_id = f.id)"},
    {"The file \"{0}\" (number {1}) has {2} versions, but their numbers don't run from 1.",
        "SELECT f.name, f.id, COUNT(*) FROM files f JOIN versions v ON v.file_id = f.id "
        "GROUP BY f.name, f.id HAVING COUNT(*) <> MAX(v.version) OR MIN(v.version) <> 1"},
    {"Version {2} belongs to the file number {1}, which doesn't exist.",
        "SELECT '', v.file_id, v.version FROM versions v "
        "WHERE NOT EXISTS (SELECT 1 FROM files f WHERE f.id = v.file_id)"},
    {"The file \"{0}\" (number {1}) stands in no folder and isn't deleted.",
        "SELECT f.name, f.id, 0 FROM files f WHERE f.deleted_at = 0 "
        "AND NOT EXISTS (SELECT 1 FROM file_folders p WHERE p.file_id = f.id)"},
    {"The file \"{0}\" (number {1}) is deleted, but the folder number {2} shows it.",
        "SELECT f.name, f.id, p.folder_id FROM files f JOIN file_folders p ON p.file_id = f.id "
        "WHERE f.deleted_at <> 0"},
    {"The folder number {2} shows the file number {1}, which doesn't exist.",
        "SELECT '', p.file_id, p.folder_id FROM file_folders p "
        "WHERE NOT EXISTS (SELECT 1 FROM files f WHERE f.id = p.file_id)"},
    {"The file \"{0}\" (number {1}) stands in the folder number {2} of another vault, or of none.",
        "SELECT f.name, f.id, p.folder_id FROM files f JOIN file_folders p ON p.file_id = f.id "
        "WHERE NOT EXISTS (SELECT 1 FROM folders d WHERE d.id = p.folder_id AND d.vault_id = f.vault_id)"},
    {"The folder \"{0}\" (number {1}) lies in the folder number {2}, which doesn't exist.",
        "SELECT d.name, d.id, d.parent_id FROM folders d WHERE d.parent_id <> 0 "
        "AND NOT EXISTS (SELECT 1 FROM folders p WHERE p.id = d.parent_id AND p.vault_id = d.vault_id)"},
    {"The folder \"{0}\" (number {1}) can't be reached from its vault's root folder.",
        "WITH RECURSIVE reached (id) AS (SELECT d.id FROM folders d WHERE d.parent_id = 0 UNION "
        "SELECT d.id FROM folders d JOIN reached r ON d.parent_id = r.id) "
        "SELECT d.name, d.id, 0 FROM folders d WHERE d.id NOT IN (SELECT id FROM reached)"},
    {"The folder \"{0}\" (number {1}) belongs to the vault number {2}, which doesn't exist.",
        "SELECT d.name, d.id, d.vault_id FROM folders d "
        "WHERE NOT EXISTS (SELECT 1 FROM vaults t WHERE t.id = d.vault_id)"},
    {"The file \"{0}\" (number {1}) belongs to the vault number {2}, which doesn't exist.",
        "SELECT f.name, f.id, f.vault_id FROM files f "
        "WHERE NOT EXISTS (SELECT 1 FROM vaults t WHERE t.id = f.vault_id)"},
    {"The next of the {0} would get a number up to {1}, which are taken; the count stands at {2}.",
        "SELECT n.name, n.taken, COALESCE(s.next_id, 1) FROM ("
        "SELECT 'vaults' AS name, MAX(id) AS taken FROM vaults UNION ALL SELECT 'folders', MAX(id) FROM folders "
        "UNION ALL SELECT 'files', MAX(id) FROM files UNION ALL SELECT 'variables', MAX(id) FROM variables) n "
        "LEFT JOIN next_ids s ON s.sequence = n.name WHERE n.taken >= COALESCE(s.next_id, 1)"},
    {"The vault \"{0}\" (number {1}) has {2} root folders instead of one.",
        "SELECT t.name, t.id, (SELECT COUNT(*) FROM folders d WHERE d.vault_id = t.id AND d.parent_id = 0) "
        "FROM vaults t WHERE 1 <> (SELECT COUNT(*) FROM folders d WHERE d.vault_id = t.id AND d.parent_id = 0)"},
    {"{0} has the file number {1} checked out, which is deleted or doesn't exist.",
        "SELECT c.user_name, c.file_id, 0 FROM check_outs c "
        "WHERE NOT EXISTS (SELECT 1 FROM files f WHERE f.id = c.file_id AND f.deleted_at = 0)"},
    {"{0} has the file number {1} checked out in version {2}, which isn't its latest.",
        "SELECT c.user_name, c.file_id, c.base_version FROM check_outs c JOIN files f ON f.id = c.file_id "
        "WHERE c.base_version <> f.latest_version AND NOT (c.base_version = 0 AND f.latest_version = 1)"},
    {"Card values belong to version {2} of the file number {1}, which doesn't exist.",
        "SELECT DISTINCT '', r.file_id, r.version FROM card_values r "
        "WHERE NOT EXISTS (SELECT 1 FROM versions v WHERE v.file_id = r.file_id AND v.version = r.version) "
        "AND NOT EXISTS (SELECT 1 FROM check_outs c WHERE c.file_id = r.file_id AND c.base_version + 1 = r.version "
        "AND c.card_open = 1)"},
    {"Version {2} of the file number {1}, which doesn't exist, refers to other files.",
        "SELECT DISTINCT '', r.file_id, r.version FROM file_references r "
        "WHERE NOT EXISTS (SELECT 1 FROM versions v WHERE v.file_id = r.file_id AND v.version = r.version) "
        "AND NOT EXISTS (SELECT 1 FROM check_outs c WHERE c.file_id = r.file_id AND c.base_version + 1 = r.version "
        "AND c.references_open = 1)"},
    {"A file refers to version {2} of the file number {1}, which doesn't exist.",
        "SELECT DISTINCT '', r.to_file_id, r.to_version FROM file_references r "
        "WHERE NOT EXISTS (SELECT 1 FROM versions v WHERE v.file_id = r.to_file_id AND v.version = r.to_version)"},
    {"The content {0} is counted with different sizes.",
        "SELECT v.content, 0, 0 FROM versions v GROUP BY v.content HAVING MIN(v.content_size) <> "
        "MAX(v.content_size)"},
};

class StoreCheck {
public:
    explicit StoreCheck(Store& store)
        : m_store(store)
        , m_session(store.database().session())
    {
    }

    CheckReport run(const std::function<void(std::int64_t, std::int64_t)>& progress)
    {
        std::vector<Holder> holders;
        {
            Transaction snapshot(m_store.database(), Transaction::Kind::Read);
            m_report.problems = zn::sqliteProblems(m_session);
            if (!hasAllTables())
                return std::move(m_report); // nothing else can be read
            for (std::string& problem : changedRows(m_store.database(), vaultSchema))
                m_report.problems.push_back(std::move(problem));
            for (const Rule& rule : rules)
                apply(rule);
            checkNameKeys();
            count();
            holders = heldContents(m_session);
            for (const Holder& holder : holders)
                m_report.bytes += holder.content.size;
            m_report.contents = static_cast<std::int64_t>(holders.size());
        }
        for (std::size_t i = 0; i < holders.size(); ++i) {
            verify(holders[i]);
            if (progress)
                progress(static_cast<std::int64_t>(i) + 1, static_cast<std::int64_t>(holders.size()));
        }
        countLeftovers();
        return std::move(m_report);
    }

private:
    bool hasAllTables()
    {
        const auto missing = missingTables(m_store.database(), vaultSchema);
        for (const std::string& table : missing)
            m_report.problems.push_back(
                "The database has no table " + table + ". Bring the database back from a backup.");
        if (!missing.empty())
            return false;
        const auto changed = changedTables(m_store.database(), vaultSchema);
        for (const std::string& table : changed)
            m_report.problems.push_back(
                "The database has " + table + " with other columns. Bring the database back from a backup.");
        return changed.empty();
    }

    void apply(const Rule& rule)
    {
        std::string name;
        long long first = 0, second = 0;
        soci::statement statement
            = (m_session.prepare << rule.sql, soci::into(name), soci::into(first), soci::into(second));
        statement.execute();
        while (statement.fetch())
            m_report.problems.push_back(fmt::format(fmt::runtime(rule.sentence), name, first, second));
    }

    void checkNameKeys()
    {
        std::string name, key;
        soci::statement statement
            = (m_session.prepare << "SELECT f.name, p.name_key FROM file_folders p JOIN files f ON f.id = p.file_id",
                soci::into(name), soci::into(key));
        statement.execute();
        while (statement.fetch()) {
            if (nameKey(zn::toText(name)) != key)
                m_report.problems.push_back("The file \"" + name + "\" can't be found under its name.");
            if (hasUnsafeCharacter(zn::toText(name)))
                noteUnsafe("file", name);
        }
        statement = (m_session.prepare << "SELECT name, name_key FROM vaults", soci::into(name), soci::into(key));
        statement.execute();
        while (statement.fetch()) {
            if (nameKey(zn::toText(name)) != key)
                m_report.problems.push_back("The vault \"" + name + "\" can't be found under its name.");
        }
        statement = (m_session.prepare << "SELECT name, name_key FROM folders WHERE parent_id <> 0", soci::into(name),
            soci::into(key));
        statement.execute();
        while (statement.fetch()) {
            if (nameKey(zn::toText(name)) != key)
                m_report.problems.push_back("The folder \"" + name + "\" can't be found under its name.");
            if (hasUnsafeCharacter(zn::toText(name)))
                noteUnsafe("folder", name);
        }
        statement = (m_session.prepare << "SELECT root FROM vaults", soci::into(name));
        statement.execute();
        while (statement.fetch()) {
            if (hasUnsafeCharacter(zn::toText(name)))
                noteUnsafe("vault's folder", name);
        }
    }

    /// Nothing is lost, but tasks fail on it.
    void noteUnsafe(const char* kind, const std::string& name)
    {
        m_report.notes.push_back(fmt::format("The {} \"{}\" has a character in its name that tasks can't work with "
                                             "(\", <, > or a control character).",
            kind, name));
    }

    std::int64_t number(const char* sql)
    {
        long long value = 0;
        m_session << sql, soci::into(value);
        return value;
    }

    void count()
    {
        m_report.files = number("SELECT COUNT(*) FROM files WHERE deleted_at = 0");
        m_report.deletedFiles = number("SELECT COUNT(*) FROM files WHERE deleted_at <> 0");
        m_report.versions = number("SELECT COUNT(*) FROM versions");
        m_report.checkedOut = number("SELECT COUNT(*) FROM check_outs");
    }

    void verify(const Holder& holder)
    {
        if (const auto problem = problemOf(m_store.archive(), holder))
            m_report.problems.push_back(*problem);
    }

    void countLeftovers()
    {
        const auto count = m_store.archive().countLeftovers(neededContents(m_store.database()));
        if (!count)
            m_report.notes.push_back(
                "Another program is adding or backing up files, so leftovers were not looked for.");
        else if (*count > 0)
            m_report.notes.push_back(std::to_string(*count)
                + " contents in the archive belong to no version, as interrupted work leaves them; "
                  "'arkin vault clean' sets them aside.");
    }

    Store& m_store;
    soci::session& m_session;
    CheckReport m_report;
};

} // namespace

std::vector<Holder> heldContents(soci::session& session)
{
    std::vector<Holder> holders;
    Holder holder;
    long long size = 0;
    soci::statement statement
        = (session.prepare << "SELECT v.content, v.content_size, f.name, v.version FROM versions v JOIN files f "
                              "ON f.id = v.file_id ORDER BY v.content, v.file_id, v.version",
            soci::into(holder.content.hash), soci::into(size), soci::into(holder.name), soci::into(holder.version));
    statement.execute();
    while (statement.fetch()) {
        holder.content.size = size;
        if (holders.empty() || holders.back().content.hash != holder.content.hash)
            holders.push_back(holder);
    }
    return holders;
}

std::optional<std::string> problemOf(const Archive& archive, const Holder& holder)
{
    const std::string who = "\"" + holder.name + "\", version " + std::to_string(holder.version) + ": ";
    try {
        const auto problem = archive.problemOf(holder.content);
        return problem ? std::optional(who + *problem + ".") : std::nullopt;
    } catch (const zn::StatusError& error) {
        return who + error.what();
    }
}

Archive::IsNeeded neededContents(Database& database)
{
    auto needed = std::make_shared<std::optional<std::unordered_set<std::string>>>();
    return [needed, &database](const std::string& hash) {
        if (!*needed) {
            needed->emplace();
            std::string content;
            soci::statement statement
                = (database.session().prepare << "SELECT DISTINCT content FROM versions", soci::into(content));
            statement.execute();
            while (statement.fetch())
                (*needed)->insert(content);
        }
        return (*needed)->contains(hash);
    };
}

CheckReport checkStore(Store& store, const std::function<void(std::int64_t done, std::int64_t total)>& progress)
{
    return StoreCheck(store).run(progress);
}

} // namespace zn::arkin
