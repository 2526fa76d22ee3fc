#pragma once

#include "arkin/store/Database.h"
#include "base/Value.h"

#include <optional>
#include <span>
#include <vector>

namespace zn::arkin {

/// A card variable of the vault.
struct Variable {
    std::int32_t id = 0;
    zn::Text name;
};

/// One value of a file's card.
struct CardValue {
    std::int32_t variableId = 0;
    zn::Text configuration; ///< "@" for the file's own
    zn::Value value;
};

/// One write to the card of a checked-out file.
struct CardWrite {
    std::int32_t fileId = 0;
    std::int32_t variableId = 0;
    zn::Text configuration;
    zn::Value value;
};

/// Card variables of a vault and their values by file, version and configuration.
class Cards {
public:
    Cards(Database& database, std::int32_t vaultId)
        : m_database(database)
        , m_vaultId(vaultId)
    {
    }

    /// In the order of their creation.
    std::vector<Variable> variables();
    /// By name without regard to case.
    std::optional<Variable> findVariable(zn::TextView name);
    /// Adds a variable, or returns the id of the one that has this name. A transaction of its own.
    std::int32_t addVariable(zn::TextView name);

    /// All values of a version, ordered by variable and configuration.
    std::vector<CardValue> values(std::int32_t fileId, std::int32_t version);
    std::optional<zn::Value> value(
        std::int32_t fileId, std::int32_t version, std::int32_t variableId, zn::TextView configuration);

    /// Copies the values of one version to another. Inside a transaction, as the following.
    void copy(std::int32_t fileId, std::int32_t fromVersion, std::int32_t toVersion);
    /// Creates or replaces values; `versions` has the version for each write.
    void write(std::span<const CardWrite> writes, std::span<const std::int32_t> versions);

private:
    Database& m_database;
    std::int32_t m_vaultId;
};

/// How a value is stored: its type number and a text from which it comes back exactly.
struct StoredCardValue {
    int type = 0;
    std::string text;
};
/// Raises DISP_E_TYPEMISMATCH for objects and arrays, which a card cannot hold.
StoredCardValue toStoredCard(const zn::Value& value);
zn::Value fromStoredCard(const StoredCardValue& stored);

} // namespace zn::arkin
