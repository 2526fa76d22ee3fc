#include "arkin/store/Cards.h"

#include "arkin/store/Codes.h"
#include "arkin/store/Folders.h"

#include <soci/soci.h>

namespace zn::arkin {

std::vector<Variable> Cards::variables()
{
    std::vector<Variable> variables;
    std::int32_t id = 0;
    std::string name;
    soci::statement statement
        = (m_database.session().prepare << "SELECT id, name FROM variables WHERE vault_id = :v ORDER BY id",
            soci::use(m_vaultId), soci::into(id), soci::into(name));
    statement.execute();
    while (statement.fetch())
        variables.push_back({id, zn::toText(name)});
    return variables;
}

std::optional<Variable> Cards::findVariable(zn::TextView name)
{
    const std::string key = nameKey(name);
    std::int32_t id = 0;
    std::string stored;
    m_database.session() << "SELECT id, name FROM variables WHERE vault_id = :v AND name_key = :k",
        soci::use(m_vaultId), soci::use(key), soci::into(id), soci::into(stored);
    if (!m_database.session().got_data())
        return std::nullopt;
    return Variable{id, zn::toText(stored)};
}

std::int32_t Cards::addVariable(zn::TextView name)
{
    const std::string stored = zn::toUtf8(name), key = nameKey(name);
    if (name.empty())
        throw zn::StatusError(E_ARK_BAD_NAME, "A card variable needs a name.");
    Transaction transaction(m_database);
    if (const auto known = findVariable(name))
        return known->id;
    const std::int32_t id = m_database.allocateIds("variables");
    m_database.session() << "INSERT INTO variables (id, vault_id, name, name_key) VALUES (:i, :v, :n, :k)",
        soci::use(id), soci::use(m_vaultId), soci::use(stored), soci::use(key);
    transaction.commit();
    return id;
}

std::vector<CardValue> Cards::values(std::int32_t fileId, std::int32_t version)
{
    std::vector<CardValue> values;
    std::int32_t variableId = 0;
    std::string configuration;
    StoredCardValue stored;
    soci::statement statement
        = (m_database.session().prepare << "SELECT variable_id, configuration, value_type, value_text FROM card_values "
                                           "WHERE file_id = :f AND version = :v ORDER BY variable_id, configuration",
            soci::use(fileId), soci::use(version), soci::into(variableId), soci::into(configuration),
            soci::into(stored.type), soci::into(stored.text));
    statement.execute();
    while (statement.fetch())
        values.push_back({variableId, zn::toText(configuration), fromStoredCard(stored)});
    return values;
}

std::optional<zn::Value> Cards::value(
    std::int32_t fileId, std::int32_t version, std::int32_t variableId, zn::TextView configuration)
{
    const std::string name = zn::toUtf8(configuration);
    StoredCardValue stored;
    m_database.session() << "SELECT value_type, value_text FROM card_values WHERE file_id = :f AND version = :v "
                            "AND variable_id = :n AND configuration = :c",
        soci::use(fileId), soci::use(version), soci::use(variableId), soci::use(name), soci::into(stored.type),
        soci::into(stored.text);
    if (!m_database.session().got_data())
        return std::nullopt;
    return fromStoredCard(stored);
}

void Cards::copy(std::int32_t fileId, std::int32_t fromVersion, std::int32_t toVersion)
{
    m_database.session() << "INSERT INTO card_values (file_id, version, variable_id, configuration, value_type, "
                            "value_text) SELECT file_id, :t, variable_id, configuration, value_type, value_text "
                            "FROM card_values WHERE file_id = :f AND version = :v",
        soci::use(toVersion), soci::use(fileId), soci::use(fromVersion);
}

void Cards::write(std::span<const CardWrite> writes, std::span<const std::int32_t> versions)
{
    std::int32_t fileId = 0, version = 0, variableId = 0;
    std::string configuration;
    StoredCardValue stored;
    soci::session& session = m_database.session();
    soci::statement remove = (session.prepare << "DELETE FROM card_values WHERE file_id = :f AND version = :v AND "
                                                 "variable_id = :n AND configuration = :c",
        soci::use(fileId), soci::use(version), soci::use(variableId), soci::use(configuration));
    soci::statement insert = (session.prepare << "INSERT INTO card_values (file_id, version, variable_id, "
                                                 "configuration, value_type, value_text) "
                                                 "VALUES (:f, :v, :n, :c, :t, :x)",
        soci::use(fileId), soci::use(version), soci::use(variableId), soci::use(configuration), soci::use(stored.type),
        soci::use(stored.text));
    for (std::size_t i = 0; i < writes.size(); ++i) {
        fileId = writes[i].fileId;
        version = versions[i];
        variableId = writes[i].variableId;
        configuration = zn::toUtf8(writes[i].configuration);
        stored = toStoredCard(writes[i].value);
        remove.execute(true);
        insert.execute(true);
    }
}

} // namespace zn::arkin
