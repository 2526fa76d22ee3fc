#include "arkin/store/SearchIndex.h"

#include "platform/Sqlite.h"

#include <algorithm>
#include <soci/soci.h>
#include <sstream>

namespace zn::arkin {

namespace {

constexpr const char* fileName = "search-";

// `texts` has for each file its folded name and card values, a line each, and finds any three letters of them.
// `reached` has one row: to which vault the index belongs, and its turn of writing up to which it is true.
const char* const tables[] = {
    "CREATE VIRTUAL TABLE IF NOT EXISTS texts USING fts5 (text, tokenize = 'trigram case_sensitive 1')",
    "CREATE TABLE IF NOT EXISTS reached (identity VARCHAR(60) NOT NULL PRIMARY KEY, turn BIGINT NOT NULL)",
};

constexpr const char* changes
    = "SELECT c.file_id, COALESCE(f.name, ''), COALESCE(v.value_text, '') FROM file_changes c "
      "LEFT JOIN files f ON f.id = c.file_id AND f.deleted_at = 0 AND f.vault_id = :v "
      "LEFT JOIN card_values v ON v.file_id = f.id AND v.version = f.latest_version "
      "WHERE c.turn > :t ORDER BY c.file_id";

std::string folded(const std::string& text) { return zn::toUtf8(zn::foldCase(zn::toText(text))); }

std::string identityOf(Vault& vault)
{
    std::string id;
    vault.database().session() << "SELECT id FROM store_identity", soci::into(id);
    return id + " " + std::to_string(vault.info().id);
}

/// Removes the database with what stands beside it.
void removeDatabase(const std::filesystem::path& file)
{
    for (const char* suffix : {"", "-wal", "-shm"})
        std::filesystem::remove(file.string() + suffix);
}

struct Query {
    std::string match;               ///< words of three letters and more, all of which have to be there
    std::vector<std::string> others; ///< shorter words
};

Query queryOf(zn::TextView words)
{
    constexpr std::size_t leastIndexed = 3;
    Query query;
    std::istringstream stream(zn::toUtf8(zn::foldCase(words)));
    for (std::string word; stream >> word;) {
        if (zn::toText(word).size() < leastIndexed) {
            query.others.push_back(word);
            continue;
        }
        std::string quoted = "\"";
        for (const char c : word)
            quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
        query.match += (query.match.empty() ? "" : " AND ") + quoted + "\"";
    }
    return query;
}

} // namespace

SearchIndex::SearchIndex(Vault& vault, const std::filesystem::path& folder)
    : m_vault(vault)
{
    std::error_code ignored; // what can't be made is told by the opening
    std::filesystem::create_directories(folder, ignored);
    const auto file = folder / (fileName + std::to_string(vault.info().id) + ".sqlite");
    try {
        open(file);
    } catch (const zn::StatusError&) {
        m_database.reset();
        removeDatabase(file);
        open(file);
    }
}

SearchIndex::~SearchIndex() = default;

void SearchIndex::open(const std::filesystem::path& file)
{
    const std::string identity = identityOf(m_vault);
    m_database = std::make_unique<Database>(zn::sqliteConnection(file));
    soci::session& session = m_database->session();
    try {
        for (const char* table : tables)
            session << table;
        Transaction transaction(*m_database);
        std::string known;
        session << "SELECT identity FROM reached", soci::into(known);
        if (known != identity) {
            session << "DELETE FROM texts";
            session << "DELETE FROM reached";
            session << "INSERT INTO reached (identity, turn) VALUES (:i, -1)", soci::use(identity);
        }
        transaction.commit();
    } catch (const soci::soci_error& error) {
        throw zn::StatusError(
            E_ARK_DATABASE, "The index " + file.string() + " can't be used: " + error.get_error_message() + ".");
    }
}

void SearchIndex::catchUp(const std::function<void(std::int64_t)>& progress)
{
    const ReadScope scope(m_vault.database());
    const long long now = m_vault.database().turn();
    long long reached = 0;
    soci::session& own = m_database->session();
    own << "SELECT turn FROM reached", soci::into(reached);
    if (reached == now)
        return;
    Transaction transaction(*m_database);
    own << "SELECT turn FROM reached", soci::into(reached); // another process may have been faster
    if (reached > now)
        reached = -1; // an older copy of the vault has come back
    if (reached < 0)
        own << "DELETE FROM texts";
    const std::int32_t vaultId = m_vault.info().id;
    std::int32_t fileId = 0, present = 0;
    std::int64_t done = 0;
    std::string name, value, text;
    soci::statement statement = (m_vault.database().session().prepare << changes, soci::use(vaultId),
        soci::use(reached), soci::into(fileId), soci::into(name), soci::into(value));
    soci::statement insert
        = (own.prepare << "INSERT INTO texts (rowid, text) VALUES (:i, :t)", soci::use(present), soci::use(text));
    const auto finish = [&] {
        if (reached >= 0 && present != 0)
            own << "DELETE FROM texts WHERE rowid = :i", soci::use(present);
        if (!text.empty())
            insert.execute(true);
        if (progress && ++done % 1000 == 0)
            progress(done);
    };
    statement.execute();
    while (statement.fetch()) {
        if (fileId != present) {
            finish();
            present = fileId;
            text = folded(name);
        }
        if (!value.empty())
            text += '\n' + folded(value);
    }
    finish();
    own << "UPDATE reached SET turn = :t", soci::use(now);
    transaction.commit();
}

std::vector<std::int32_t> SearchIndex::find(zn::TextView words, std::size_t most)
{
    const Query query = queryOf(words);
    if (query.match.empty() && query.others.empty())
        return {};
    std::string sql = "SELECT rowid FROM texts WHERE ";
    if (!query.match.empty())
        sql += "texts MATCH :m";
    for (std::size_t i = 0; i < query.others.size(); ++i)
        sql += (i == 0 && query.match.empty() ? "" : " AND ") + ("instr(text, :w" + std::to_string(i)) + ") > 0";
    sql += " LIMIT " + std::to_string(most);
    std::int32_t fileId = 0;
    soci::statement statement(m_database->session());
    if (!query.match.empty())
        statement.exchange(soci::use(query.match));
    for (const std::string& word : query.others)
        statement.exchange(soci::use(word));
    statement.exchange(soci::into(fileId));
    statement.alloc();
    statement.prepare(sql);
    statement.define_and_bind();
    statement.execute();
    std::vector<std::int32_t> found;
    while (statement.fetch())
        found.push_back(fileId);
    return found;
}

void removeSearchIndexes(const std::filesystem::path& folder)
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored))
        if (entry.path().filename().string().starts_with(fileName))
            std::filesystem::remove(entry.path(), ignored);
}

} // namespace zn::arkin
