#include "arkin/store/CheckOut.h"
#include "arkin/store/Codes.h"

#include <soci/soci.h>
#include <unordered_map>
#include <unordered_set>

// What is written to a checked-out file before its check-in: card values and references of the version to come.

namespace zn::arkin {

namespace {

/// The check-outs of files that are the caller's here, read in one go.
class OwnCheckOuts {
public:
    template <class Items>
    OwnCheckOuts(Vault& vault, const Items& items)
        : m_vault(vault)
    {
        std::vector<std::int32_t> ids;
        for (const auto& item : items)
            ids.push_back(item.fileId);
        for (const auto& row : vault.files().checkOuts(ids)) {
            if (row && vault.isMine(*row))
                m_rows.emplace(row->fileId, *row);
        }
    }

    /// Raises as `requireMine`.
    CheckOutRow& operator[](std::int32_t fileId)
    {
        const auto known = m_rows.find(fileId);
        return known != m_rows.end() ? known->second
                                     : m_rows.emplace(fileId, requireMine(m_vault, fileId)).first->second;
    }

    /// Gives the version to come its own copy of the card before the first write to it.
    void openCard(CheckOutRow& row)
    {
        if (row.cardOpen)
            return;
        m_vault.cards().copy(row.fileId, row.baseVersion, row.versionToCome());
        m_vault.database().session() << "UPDATE check_outs SET card_open = 1 WHERE file_id = :f", soci::use(row.fileId);
        row.cardOpen = true;
    }

    void openReferences(CheckOutRow& row)
    {
        if (row.referencesOpen)
            return;
        m_vault.references().copy(row.fileId, row.baseVersion, row.versionToCome());
        m_vault.database().session() << "UPDATE check_outs SET references_open = 1 WHERE file_id = :f",
            soci::use(row.fileId);
        row.referencesOpen = true;
    }

private:
    Vault& m_vault;
    std::unordered_map<std::int32_t, CheckOutRow> m_rows;
};

zn::Status refusalOf(const CardWrite& write, const std::unordered_set<std::int32_t>& variables, OwnCheckOuts& checkOuts)
{
    try {
        if (!variables.contains(write.variableId))
            return E_ARK_NO_SUCH_VARIABLE;
        toStoredCard(write.value);
        checkOuts[write.fileId];
        return zn::S_OK;
    } catch (const zn::StatusError& error) {
        return error.status();
    }
}

} // namespace

std::vector<zn::Status> writeCards(Vault& vault, std::span<const CardWrite> writes)
{
    Transaction transaction(vault.database());
    std::unordered_set<std::int32_t> variables;
    for (const Variable& variable : vault.cards().variables())
        variables.insert(variable.id);
    OwnCheckOuts checkOuts(vault, writes);
    std::vector<zn::Status> statuses;
    bool refused = false;
    for (const CardWrite& write : writes) {
        statuses.push_back(refusalOf(write, variables, checkOuts));
        refused = refused || zn::failed(statuses.back());
    }
    if (refused)
        return statuses;
    std::vector<std::int32_t> versions;
    for (const CardWrite& write : writes) {
        CheckOutRow& row = checkOuts[write.fileId];
        checkOuts.openCard(row);
        versions.push_back(row.versionToCome());
    }
    vault.cards().write(writes, versions);
    transaction.commit();
    return statuses;
}

void addReferences(Vault& vault, std::span<const NewReference> references)
{
    Transaction transaction(vault.database());
    OwnCheckOuts checkOuts(vault, references);
    std::unordered_map<std::int32_t, std::int32_t> latestVersions;
    std::vector<ReferenceRow> rows;
    for (const NewReference& reference : references) {
        CheckOutRow& row = checkOuts[reference.fileId];
        checkOuts.openReferences(row);
        const auto [latest, isNew] = latestVersions.try_emplace(reference.to.fileId, 0);
        if (isNew)
            latest->second = vault.file(reference.to.fileId).latestVersion;
        rows.push_back({row.fileId, row.versionToCome(), reference.to.fileId, reference.to.folderId, latest->second});
    }
    vault.references().write(rows);
    transaction.commit();
}

} // namespace zn::arkin
