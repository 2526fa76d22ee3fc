#include "arkin/store/StoreCheck.h"
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

/// A content and one version that holds it, for the sentence.
struct Holder {
    Content content;
    std::string name;
    std::int32_t version = 0;
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
            for (const Rule& rule : rules)
                apply(rule);
            checkNameKeys();
            count();
            holders = contents();
        }
        for (std::size_t i = 0; i < holders.size(); ++i) {
            verify(holders[i]);
            if (progress)
                progress(static_cast<std::int64_t>(i) + 1, static_cast<std::int64_t>(holders.size()));
        }
        removeLeftovers();
        return std::move(m_report);
    }

private:
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
        statement = (m_session.prepare << "SELECT name FROM folders WHERE parent_id <> 0", soci::into(name));
        statement.execute();
        while (statement.fetch()) {
            if (hasUnsafeCharacter(zn::toText(name)))
                noteUnsafe("folder", name);
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

    std::vector<Holder> contents()
    {
        std::vector<Holder> holders;
        Holder holder;
        long long size = 0;
        soci::statement statement
            = (m_session.prepare << "SELECT v.content, v.content_size, f.name, v.version FROM versions v JOIN files f "
                                    "ON f.id = v.file_id ORDER BY v.content, v.file_id, v.version",
                soci::into(holder.content.hash), soci::into(size), soci::into(holder.name), soci::into(holder.version));
        statement.execute();
        while (statement.fetch()) {
            holder.content.size = size;
            if (!holders.empty() && holders.back().content.hash == holder.content.hash)
                continue;
            holders.push_back(holder);
            m_report.bytes += size;
        }
        m_report.contents = static_cast<std::int64_t>(holders.size());
        return holders;
    }

    void verify(const Holder& holder)
    {
        const std::string who = "\"" + holder.name + "\", version " + std::to_string(holder.version) + ": ";
        try {
            if (const auto problem = m_store.archive().problemOf(holder.content))
                m_report.problems.push_back(who + *problem + ".");
        } catch (const zn::StatusError& error) {
            m_report.problems.push_back(who + error.what());
        }
    }

    void removeLeftovers()
    {
        // Read when the archive is locked: before that a batch may still bring versions in.
        std::unordered_set<std::string> needed;
        bool isRead = false;
        const auto removed = m_store.archive().removeLeftovers([&](const std::string& hash) {
            if (!isRead)
                needed = neededHashes();
            isRead = true;
            return needed.contains(hash);
        });
        if (!removed)
            m_report.notes.push_back("Another program is adding files, so leftovers were not looked for.");
        else if (*removed > 0)
            m_report.notes.push_back(
                std::to_string(*removed) + " leftover contents of interrupted work were removed from the archive.");
    }

    std::unordered_set<std::string> neededHashes()
    {
        std::unordered_set<std::string> hashes;
        std::string hash;
        soci::statement statement = (m_session.prepare << "SELECT DISTINCT content FROM versions", soci::into(hash));
        statement.execute();
        while (statement.fetch())
            hashes.insert(hash);
        return hashes;
    }

    Store& m_store;
    soci::session& m_session;
    CheckReport m_report;
};

} // namespace

CheckReport checkStore(Store& store, const std::function<void(std::int64_t done, std::int64_t total)>& progress)
{
    return StoreCheck(store).run(progress);
}

} // namespace zn::arkin
